#include "app/window/bridge/ListHelpState.h"

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/WantedState.h"
#include "core/Text.h"
#include "tidy/LineCheck.h"
#include "tidy/TidyList.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <chrono>

namespace orvalen {
namespace {

using namespace std::chrono_literals;

/// The check runs when nobody has typed for this time.
constexpr auto pause = 300ms;
constexpr std::size_t mostShownLines = 500;
/// Longer lists are not tried in both formats.
constexpr std::size_t mostCountedLines = 5'000;

} // namespace

ListHelpState::ListHelpState(ContentView& view, ChangeNotifier& notifier, WantedState& wanted)
    : StateProperties(view, notifier), wanted_(wanted) {
    follow(view.matchInput, view.matchedTracks);
    observe(view.matchInput, [this] { wait(); });
    observe(view.matchInputFormat, [this] { wait(); });
    observe(view.trackCount, [this] { wait(); });
    observe(view.isMatching, [this] { countLeftOutOfRun(); });
    observe(view.matchedTracks, [this] { followRows(); });
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &ListHelpState::check);
}

ListHelpState::~ListHelpState() {
    stopCounting();
}

void ListHelpState::stopCounting() {
    *stop_ = true;
    stop_ = std::make_shared<std::atomic<bool>>(false);
}

void ListHelpState::wait() {
    timer_.start(pause);
}

bool ListHelpState::canTidy() const {
    return !isBlank(view().matchInput.get()) && !wanted_.tooLongToShow();
}

ListHelpState::Report ListHelpState::reportOn(const std::string& text) {
    const LineCheck check = checkLines(text);
    Report report;
    report.caption = toQString(checkCaption(check));
    std::size_t bytes = 0;
    int position = 0;
    for (const LeftOutLine& line : check.leftOut) {
        if (report.places.size() == mostShownLines)
            break;
        position +=
            static_cast<int>(toQString(std::string_view(text).substr(bytes, line.offset - bytes)).size());
        bytes = line.offset;
        report.lines.append(toQString(line.text));
        report.reasons.append(toQString(reasonText(line.reason)));
        report.places.emplace_back(position, static_cast<int>(report.lines.back().size()));
    }
    return report;
}

void ListHelpState::check() {
    stopCounting();
    const std::uint64_t number = ++checkNumber_;
    onMatchQueue([text = view().matchInput.get()] { return reportOn(text); },
                 [this, number](Report report) {
                     if (number == checkNumber_)
                         receive(std::move(report));
                 });
    onMatchQueue(
        [stop = stop_, index = view().trackDict.get(), text = view().matchInput.get(),
         format = view().matchInputFormat.get()] {
            const std::vector<std::string> lines = wantedLines(text);
            const bool counts = !index.empty() && lines.size() <= mostCountedLines;
            const auto found = counts ? countFormats(LibraryCatalog(index), lines, *stop) : std::nullopt;
            return found ? toQString(formatHint(*found, format)) : QString();
        },
        [this, number](const QString& hint) {
            if (number == checkNumber_ && std::exchange(hint_, hint) != hint)
                emit changed();
        });
}

void ListHelpState::receive(Report report) {
    if (report.caption == caption_ && report.lines == leftOut_ && report.places == places_)
        return;
    caption_ = std::move(report.caption);
    leftOut_ = std::move(report.lines);
    reasons_ = std::move(report.reasons);
    places_ = std::move(report.places);
    emit changed();
}

void ListHelpState::edit(QQuickTextDocument* document) {
    document_ = document->textDocument();
}

void ListHelpState::show(int leftOutLine) {
    if (leftOutLine < 0 || static_cast<std::size_t>(leftOutLine) >= places_.size() || !document_)
        return;
    const auto [position, length] = places_[static_cast<std::size_t>(leftOutLine)];
    if (position + length < document_->characterCount())
        emit lineShown(position, length);
}

void ListHelpState::tidy() {
    wanted_.commitEdits();
    leaveAll();
    if (!canTidy() || !document_)
        return;
    stopCounting();
    onMatchQueue([index = view().trackDict.get(), text = view().matchInput.get(),
                  format = view().matchInputFormat.get()] { return tidied(index, text, format); },
                 [this](Tidied result) { receive(std::move(result)); });
}

ListHelpState::Tidied ListHelpState::tidied(const LibraryIndex& index, const std::string& text,
                                            const std::string& format) {
    const std::string after = tidyText(text);
    Tidied result{toQString(text), toQString(after), {}};
    std::size_t bytes = 0;
    int line = 0;
    for (const TidyDecision& decision : tidyDecisions(LibraryCatalog(index), after, format)) {
        const std::string_view between = std::string_view(after).substr(bytes, decision.offset - bytes);
        line += static_cast<int>(std::ranges::count(between, '\n'));
        bytes = decision.offset;
        QStringList readings;
        for (const std::string& reading : decision.readings)
            readings.append(toQString(reading));
        result.questions.push_back({line, toQString(decision.line), readings});
    }
    return result;
}

void ListHelpState::receive(Tidied tidied) {
    // The user may have typed in the meantime.
    if (!document_ || rawText(*document_) != tidied.before)
        return;
    const QString& before = tidied.before;
    const QString& after = tidied.after;
    if (before != after) {
        const auto start = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
        auto first = static_cast<qsizetype>(start.first - before.begin());
        if (first > 0 && before[first - 1].isHighSurrogate())
            --first;
        qsizetype same = 0;
        while (same < std::min(before.size(), after.size()) - first &&
               before[before.size() - 1 - same] == after[after.size() - 1 - same])
            ++same;
        if (same > 0 && before[before.size() - same].isLowSurrogate())
            --same;
        replace(static_cast<int>(first), static_cast<int>(before.size() - same - first),
                after.mid(first, after.size() - same - first));
    }
    questions_ = std::move(tidied.questions);
    question_ = 0;
    nextQuestion();
}

void ListHelpState::replace(int position, int length, const QString& text) {
    QTextCursor cursor(document_);
    cursor.beginEditBlock();
    cursor.setPosition(position);
    cursor.setPosition(position + length, QTextCursor::KeepAnchor);
    cursor.insertText(text);
    cursor.endEditBlock();
}

std::optional<ListHelpState::Place> ListHelpState::placeOf(const Question& question) const {
    const QTextBlock block = document_ ? document_->findBlockByNumber(question.line) : QTextBlock();
    const auto place = block.isValid() ? block.text().indexOf(question.text) : -1;
    if (place < 0)
        return std::nullopt;
    return Place(block.position() + static_cast<int>(place), static_cast<int>(question.text.size()));
}

/// Shows the question at `question_`. Skips questions about lines that the user has edited since.
void ListHelpState::nextQuestion() {
    while (question_ < questions_.size() && !placeOf(questions_[question_]))
        ++question_;
    if (question_ == questions_.size())
        leaveAll();
    else if (const auto place = placeOf(questions_[question_]))
        emit lineShown(place->first, place->second);
    emit changed();
}

void ListHelpState::accept(int reading) {
    if (question_ >= questions_.size() || reading < 0 || reading >= readings().size())
        return;
    const Question& question = questions_[question_];
    if (const auto place = placeOf(question))
        replace(place->first, place->second, question.readings[reading]);
    leave();
}

void ListHelpState::leave() {
    if (question_ < questions_.size())
        ++question_;
    nextQuestion();
}

void ListHelpState::leaveAll() {
    questions_.clear();
    question_ = 0;
    emit changed();
}

QString ListHelpState::question() const {
    return question_ < questions_.size() ? questions_[question_].text : QString();
}

QString ListHelpState::questionCount() const {
    return QString("%1 of %2").arg(question_ + 1).arg(questions_.size());
}

QStringList ListHelpState::readings() const {
    return question_ < questions_.size() ? questions_[question_].readings : QStringList();
}

void ListHelpState::countLeftOutOfRun() {
    if (std::exchange(wasMatching_, view().isMatching.get()) || !wasMatching_)
        return;
    stopCounting(); // the match run would have to wait until the count ends
    onMatchQueue([text = view().matchInput.get()] { return checkLines(text).leftOut.size(); },
                 [this](std::size_t count) { leftOutNow_ = count; });
}

void ListHelpState::followRows() {
    const auto& rows = view().matchedTracks.get();
    const std::optional<UUID> first = rows.empty() ? std::nullopt : std::optional(rows.front().id);
    if (view().isMatching.get() && (first != firstRow_ || rows.empty()))
        leftOutOfRows_ = leftOutNow_;
    else if (first != firstRow_)
        leftOutOfRows_ = 0;
    firstRow_ = first;
}

QString ListHelpState::leftOutOfRun() const {
    return leftOutOfRows_ == 0   ? QString()
           : leftOutOfRows_ == 1 ? QString("1 line of the list was left out")
                                 : QString("%1 lines of the list were left out").arg(leftOutOfRows_);
}

} // namespace orvalen
