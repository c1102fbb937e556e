#pragma once

#include "core/Excerpt.h"

#include <QString>
#include <QTextDocument>
#include <string>
#include <string_view>

namespace orvalen {

inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Returns the first 1,000 characters of a text that may be very long, for display.
inline QString toShownText(std::string_view text) {
    return toQString(excerpt(text));
}

inline std::string toUtf8(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Returns the document's text with line feeds, with the same length. Unlike toPlainText(), keeps no-break
/// spaces.
inline QString rawText(const QTextDocument& document) {
    return document.toRawText()
        .replace(QChar::ParagraphSeparator, u'\n')
        .replace(QChar::LineSeparator, u'\n');
}

} // namespace orvalen
