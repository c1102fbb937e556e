import QtQuick
import Orvalen

/// Tells at first sight where a row stands: by its shape, and by its colour.
Symbol {
    required property int decision

    readonly property string meaning: decision === MatchedTracksModel.NoCandidate ? "no file found"
        : decision === MatchedTracksModel.Undecided ? "needs a choice"
        : decision === MatchedTracksModel.Proposed ? "file proposed"
        : decision === MatchedTracksModel.Chosen ? "file chosen" : "in the playlist"

    name: decision === MatchedTracksModel.NoCandidate ? "decision.none"
        : decision === MatchedTracksModel.Undecided ? "decision.open"
        : decision === MatchedTracksModel.Proposed ? "decision.proposed"
        : decision === MatchedTracksModel.Chosen ? "decision.chosen" : "checkmark.circle.fill"
    color: decision === MatchedTracksModel.NoCandidate ? Theme.danger
        : decision === MatchedTracksModel.Undecided ? Theme.accentText
        : decision === MatchedTracksModel.Included ? Theme.success : Theme.secondary
    size: 20
}
