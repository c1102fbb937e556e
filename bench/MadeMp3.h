#pragma once

#include "core/Track.h"

#include <string>

namespace orvalen::bench {

inline std::string bigEndian(std::size_t number) {
    std::string result;
    for (int shift = 24; shift >= 0; shift -= 8)
        result += static_cast<char>(number >> shift & 0xFF);
    return result;
}

inline std::string frame(const std::string& name, const std::string& content) {
    return name + bigEndian(content.size()) + std::string(2, '\0') + content;
}

inline std::string textFrame(const std::string& name, const std::string& text) {
    return frame(name, '\3' + text);
}

/// Returns a tag like that of a bought mp3: the usual frames, optionally a picture, and padding.
inline std::string mp3Tag(const Track& track, std::size_t pictureLength, std::size_t padding) {
    std::string frames = textFrame("TIT2", track.title) + textFrame("TPE1", track.artist) +
                         textFrame("TALB", "The album") + textFrame("TRCK", "4/12") +
                         textFrame("TCON", track.genre);
    if (track.bpm)
        frames += textFrame("TBPM", std::to_string(*track.bpm));
    frames += frame("COMM", std::string("\0eng\0a comment", 14));
    if (pictureLength > 0)
        frames += frame("APIC", std::string("\0image/jpeg\0\3\0", 14) + std::string(pictureLength, '\xA5'));
    frames += std::string(padding, '\0');
    const std::size_t length = frames.size();
    std::string tag("ID3\3\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7)
        tag += static_cast<char>(length >> shift & 0x7F);
    return tag + frames;
}

/// Returns a tag followed by silence: MPEG frames of 128 kbit/s.
inline std::string mp3File(const Track& track, std::size_t pictureLength, std::size_t frames) {
    std::string file = mp3Tag(track, pictureLength, 1024);
    for (std::size_t i = 0; i < frames; ++i)
        file += std::string("\xFF\xFB\x90\x64", 4) + std::string(413, '\0');
    return file;
}

} // namespace orvalen::bench
