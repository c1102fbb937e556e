import QtQuick
import Orvalen

/// A mark for the decision on a row, by shape and colour.
Symbol {
    required property int decision ///< a MatchedTracksModel.Decision

    readonly property string meaning: ["no file found", "needs a choice", "file proposed", "file chosen",
                                       "in the playlist"][decision]

    name: ["decision.none", "decision.open", "decision.proposed", "decision.chosen",
           "checkmark.circle.fill"][decision]
    color: [Theme.danger, Theme.accentText, Theme.secondary, Theme.secondary, Theme.success][decision]
    size: 20
}
