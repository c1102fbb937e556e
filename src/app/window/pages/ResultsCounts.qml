pragma ComponentBehavior: Bound

import QtQuick
import Orvalen

/// The number of rows for each mark. Pressing a number goes to the next row with that mark.
Row {
    id: counts

    required property ReviewState review
    signal asked(int decision)

    readonly property list<QtObject> kinds: [
        Kind { decision: MatchedTracksModel.NoCandidate; rows: "without a file" },
        Kind { decision: MatchedTracksModel.Undecided; rows: "to choose" },
        Kind { decision: MatchedTracksModel.Proposed; rows: "with a proposed file" },
        Kind { decision: MatchedTracksModel.Included; rows: "in the playlist" }
    ]

    component Kind: QtObject {
        required property int decision
        required property string rows
    }

    spacing: 2

    Repeater {
        model: counts.kinds

        Pressable {
            id: button

            required property Kind modelData
            readonly property int count: counts.review.counts[modelData.decision] ?? 0

            implicitWidth: implicitContentWidth + 6
            implicitHeight: 22
            enabled: count > 0
            focusPolicy: Qt.NoFocus // N does the same, and there are enough tab stops before the rows
            spokenName: count + " " + modelData.rows
            spokenDetail: tip
            tip: count + " " + modelData.rows + ": go to the next (N), or back (Shift+N)"
            onClicked: counts.asked(modelData.decision)

            contentItem: Row {
                leftPadding: 5
                spacing: 5

                DecisionMark {
                    anchors.verticalCenter: parent.verticalCenter
                    decision: button.modelData.decision
                    size: 15
                }
                Caption {
                    anchors.verticalCenter: parent.verticalCenter
                    text: button.count
                    Accessible.ignored: true
                }
            }
            background: Rectangle {
                radius: 5
                color: button.stateTint

                FocusRing {
                    anchors.margins: -1
                    inner: 5
                    shown: button.visualFocus
                }
            }
        }
    }
}
