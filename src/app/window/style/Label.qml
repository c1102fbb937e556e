import QtQuick
import Orvalen

/// A text of ours or from outside; never read as markup.
Text {
    textFormat: Text.PlainText
    color: Theme.text
    font.pixelSize: Theme.body
    linkColor: color
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
