#include "app/window/style/Initials.h"

#include <algorithm>

namespace orvalen {

int Initials::next(const QStringList& labels, const QString& letter, int from) {
    const auto begins = [&letter](const QString& label) {
        return label.startsWith(letter, Qt::CaseInsensitive);
    };
    const auto start = labels.begin() + std::clamp<qsizetype>(from + 1, 0, labels.size());
    auto found = std::find_if(start, labels.end(), begins);
    if (found == labels.end())
        found = std::find_if(labels.begin(), start, begins);
    return found == labels.end() ? -1 : static_cast<int>(found - labels.begin());
}

} // namespace orvalen
