import QtQuick
import Orvalen

/// One of our symbols in one colour.
Image {
    id: symbol

    required property string name
    property color color: Theme.text
    property int size: 16

    source: name === "" ? "" : "image://symbol/" + name + "/" + color
    sourceSize.width: size
    sourceSize.height: size
    width: size
    height: size
    Accessible.ignored: true
}
