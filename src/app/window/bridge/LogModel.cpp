#include "app/window/bridge/LogModel.h"

#include "app/window/bridge/QtText.h"
#include "platform/system/ConsoleLog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QStringList>
#include <algorithm>
#include <utility>

namespace orvalen {
namespace {

/// New lines are shown at this interval, because a match run writes thousands per second.
constexpr int followInterval = 50; ///< milliseconds

} // namespace

LogModel::LogModel(ConsoleLog& log) : log_(log) {
    timer_.setSingleShot(true);
    timer_.setInterval(followInterval);
    connect(&timer_, &QTimer::timeout, this, &LogModel::follow);
    log_.observe([this] {
        if (!isFollowing_.exchange(true))
            QMetaObject::invokeMethod(
                this, [this] { timer_.start(); }, Qt::QueuedConnection);
    });
    follow();
}

LogModel::~LogModel() {
    log_.observe({});
}

void LogModel::follow() {
    isFollowing_ = false;
    auto [first, texts] = log_.linesFrom(next_);
    if (texts.empty())
        return;
    const std::size_t kept = lines_.size() + texts.size();
    const std::size_t surplus = first > next_ ? lines_.size() : kept - std::min(kept, ConsoleLog::mostLines);
    if (surplus > 0) {
        const std::size_t old = std::min(surplus, lines_.size());
        beginRemoveRows({}, 0, static_cast<int>(old) - 1);
        lines_.erase(lines_.begin(), lines_.begin() + static_cast<std::ptrdiff_t>(old));
        endRemoveRows();
    }
    const int end = static_cast<int>(lines_.size());
    beginInsertRows({}, end, end + static_cast<int>(texts.size()) - 1);
    for (const std::string& text : texts)
        lines_.push_back(toQString(text));
    endInsertRows();
    next_ = first + texts.size();
    if (shown_)
        seen_ = next_;
    emit changed();
}

int LogModel::unseen() const {
    return static_cast<int>(next_ - seen_);
}

void LogModel::setShown(bool shown) {
    if (shown_ == shown)
        return;
    shown_ = shown;
    follow();
    seen_ = next_;
    emit changed();
}

void LogModel::copy(int from, int to) const {
    const int last = std::min(std::max(from, to), static_cast<int>(lines_.size()) - 1);
    QStringList lines;
    for (int row = std::max(std::min(from, to), 0); row <= last; ++row)
        lines.append(lines_[static_cast<std::size_t>(row)]);
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join('\n') + '\n');
}

void LogModel::copyAll() const {
    copy(0, static_cast<int>(lines_.size()) - 1);
}

int LogModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

QVariant LogModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::DisplayRole)
        return {};
    return lines_[static_cast<std::size_t>(index.row())];
}

QHash<int, QByteArray> LogModel::roleNames() const {
    return {{Qt::DisplayRole, "line"}};
}

} // namespace orvalen
