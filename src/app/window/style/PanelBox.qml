import QtQuick
import QtQuick.Layouts
import Orvalen

/// A box around related controls, with a title and a symbol above.
ColumnLayout {
    id: box

    required property string title
    required property string symbol
    property int textSize: Theme.headline
    property int padding: 12
    property color fill: Theme.panel
    default property alias content: inner.data
    property alias contentSpacing: inner.spacing

    spacing: 5
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    RowLayout {
        spacing: 7
        Layout.fillWidth: true
        Layout.leftMargin: 2

        Symbol {
            name: box.symbol
            color: Theme.accentText
            size: box.textSize + 2
        }
        Label {
            Layout.fillWidth: true
            text: box.title
            font.pixelSize: box.textSize
            font.weight: Font.DemiBold
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: inner.implicitHeight + box.padding * 2
        radius: Theme.boxRadius
        color: box.fill
        border.color: Theme.line

        ColumnLayout {
            id: inner

            x: box.padding
            y: box.padding
            width: parent.width - box.padding * 2
            spacing: 8
        }
    }
}
