import QtQuick
import Orvalen

/// A small text in the secondary colour, for explanations and counts.
Label {
    font.pixelSize: Theme.caption
    color: Theme.secondary
}
