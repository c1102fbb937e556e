#include "app/window/bridge/TextDirection.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

namespace orvalen {
namespace {

constexpr QChar leftToRightMark(0x200e);
constexpr QChar isolate(0x2068);
constexpr QChar endOfIsolate(0x2069);

bool hasRightToLeft(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.direction() == QChar::DirR || c.direction() == QChar::DirAL; });
}

QString isolated(const QString& text) {
    return text.isEmpty() ? text : isolate + text + endOfIsolate;
}

} // namespace

QString directedSong(const QString& text) {
    if (!hasRightToLeft(text))
        return text;
    static const QRegularExpression tempo(QStringLiteral(R"( \(\d+ BPM\)$)"));
    const QString suffix = tempo.match(text).captured();
    return leftToRightMark + isolated(text.chopped(suffix.size())) + suffix;
}

QString directedPath(const QString& text) {
    if (!hasRightToLeft(text))
        return text;
    const qsizetype slash = std::max<qsizetype>(0, text.indexOf('/'));
    QStringList names = text.sliced(slash).split('/');
    for (QString& name : names)
        name = isolated(name);
    return leftToRightMark + text.first(slash) + names.join('/');
}

} // namespace orvalen
