import QtQuick
import Orvalen

/// A text that is never interpreted as markup.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft // also for right-to-left names, because labels form a column
    color: Theme.text
    font.pixelSize: Theme.body
    linkColor: color
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
