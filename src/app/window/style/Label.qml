import QtQuick
import Orvalen

/// A text of ours or from outside; never read as markup.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft // of right-to-left names too: the labels form a column
    color: Theme.text
    font.pixelSize: Theme.body
    linkColor: color
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
