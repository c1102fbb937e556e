import QtQuick
import Orvalen

/// A small text in the second colour: what explains or counts something.
Label {
    font.pixelSize: Theme.caption
    color: Theme.secondary
}
