pragma Singleton

import QtQuick
import Orvalen

/// Colours, sizes and durations of the whole window. Colours derive from the system's window and text colours, so that
/// light and dark follow the desktop. Text colours are adjusted until their contrast is sufficient.
QtObject {
    id: theme

    readonly property SystemPalette system: SystemPalette {
        colorGroup: SystemPalette.Active
    }
    readonly property color window: system.window
    /// Whether the desktop asks for high contrast.
    readonly property bool strong: ColorScheme.highContrast
    readonly property bool dark: luminance(window) < luminance(system.windowText)
    readonly property color white: "#ffffff"
    readonly property color black: "#000000"
    readonly property color ink: dark ? white : black

    // Surfaces, from bottom to top.
    readonly property color panel: mix(window, white, dark ? 0.045 : 0.55)
    readonly property color inset: dark ? mix(window, black, 0.28) : mix(window, white, 0.9)
    readonly property color control: dark ? mix(window, white, 0.13) : mix(window, white, 0.85)
    readonly property color controlHovered: dark ? mix(window, white, 0.19) : mix(window, white, 0.4)
    readonly property color controlPressed: dark ? mix(window, white, 0.08) : mix(window, black, 0.08)
    readonly property color track: mix(window, black, dark ? 0.38 : 0.12)
    readonly property color softLine: mix(window, ink, dark ? 0.14 : 0.13)
    readonly property color softControlLine: mix(window, ink, dark ? 0.2 : 0.22)
    readonly property color line: strong ? readable(softLine, 3, everywhere) : softLine
    readonly property color controlLine: strong ? readable(softControlLine, 3, everywhere) : softControlLine
    readonly property color dim: Qt.rgba(0, 0, 0, dark ? 0.55 : 0.35)

    readonly property var pages: [window, panel, inset, control]
    readonly property var everywhere: [window, panel, inset, control, controlHovered, track]

    // Texts and marks.
    readonly property color text: readable(system.windowText, 7, everywhere)
    readonly property color secondary: readable(mix(window, text, dark ? 0.62 : 0.6), strong ? 7 : 4.6, everywhere)
    readonly property color accentText: readable(dark ? accent : burnt, 4.6, pages)
    readonly property color danger: readable(red, 4.6, pages)
    readonly property color success: readable(green, 4.6, pages)
    readonly property color red: "#ff4f44"
    readonly property color green: "#34c759"
    readonly property color burnt: "#c85a00"
    readonly property color accent: "#ff9f0a"
    readonly property color accentHovered: "#ffb03a"
    readonly property color accentPressed: "#e68c00"
    readonly property color accentInk: "#241500"
    readonly property color focus: dark ? accent : accentText
    readonly property real disabledOpacity: 0.42

    readonly property string family: sample.font.family
    readonly property FontMetrics sample: FontMetrics {}

    /// The desktop's text size relative to 11 points, limited to 1 to 1.6.
    readonly property real scale: Math.max(1, Math.min(1.6, ColorScheme.textScale))

    // Text sizes by role, in pixels.
    readonly property int largeTitle: Math.round(26 * scale)
    readonly property int title: Math.round(23 * scale)
    readonly property int headline: Math.round(15 * scale)
    readonly property int body: Math.round(14 * scale)
    readonly property int subheadline: Math.round(13 * scale)
    readonly property int footnote: Math.round(12 * scale)
    readonly property int caption: Math.round(12 * scale)
    readonly property int smallestCaption: Math.round(11 * scale)

    /// Returns the height of a control, scaled with the text size. `pixels` is its height at a scale of 1.
    function high(pixels: real): real {
        return Math.round(pixels * scale)
    }

    readonly property int radius: 7
    readonly property int boxRadius: 10
    readonly property int quick: 120

    function mix(from: color, to: color, share: real): color {
        return Qt.rgba(from.r + (to.r - from.r) * share, from.g + (to.g - from.g) * share,
                       from.b + (to.b - from.b) * share, 1)
    }

    function linear(channel: real): real {
        return channel <= 0.03928 ? channel / 12.92 : Math.pow((channel + 0.055) / 1.055, 2.4)
    }

    function luminance(c: color): real {
        return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b)
    }

    function contrast(left: color, right: color): real {
        const a = luminance(left)
        const b = luminance(right)
        return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05)
    }

    /// Returns the colour, shifted towards black or white until its contrast on every surface is at least `least`.
    function readable(c: color, least: real, surfaces: var): color {
        let result = c
        for (let step = 0; step < 40; ++step) {
            if (surfaces.every(surface => contrast(result, surface) >= least))
                break
            result = mix(result, ink, 0.05)
        }
        return result
    }
}
