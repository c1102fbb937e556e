import QtQuick
import Orvalen

Rectangle {
    implicitHeight: 1
    color: Theme.line
    Accessible.ignored: true
}
