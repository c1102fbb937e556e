#pragma once

#include "core/Files.h"
#include "support/Folders.h"

#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <zlib.h>

namespace orvalen::test {

// Tags and containers written byte by byte, valid or invalid.

inline std::string padded(std::string_view text, std::size_t length) {
    std::string result(text.substr(0, length));
    result.resize(length, '\0');
    return result;
}

inline std::string bigEndian(std::uint64_t number, int bytes) {
    std::string result;
    for (int i = bytes - 1; i >= 0; --i)
        result += static_cast<char>(number >> (8 * i) & 0xFF);
    return result;
}

inline std::string littleEndian(std::uint64_t number, int bytes) {
    const std::string reversed = bigEndian(number, bytes);
    return {reversed.rbegin(), reversed.rend()};
}

/// Returns the number with seven bits per byte, as ID3 writes lengths.
inline std::string synchSafe(std::uint64_t number) {
    std::string result;
    for (int shift = 21; shift >= 0; shift -= 7)
        result += static_cast<char>(number >> shift & 0x7F);
    return result;
}

/// Returns an ID3 frame of this version.
inline std::string frame(int version, std::string_view name, std::string_view content) {
    const std::string head(name);
    if (version == 2)
        return head + bigEndian(content.size(), 3) + std::string(content);
    const std::string length = version == 3 ? bigEndian(content.size(), 4) : synchSafe(content.size());
    return head + length + std::string(2, '\0') + std::string(content);
}

/// Returns a text frame. Encodings: 0 Latin-1, 1 UTF-16 with a byte-order mark, 2 UTF-16 big-endian, 3 UTF-8.
inline std::string textFrame(int version, std::string_view name, int encoding, std::string_view bytes) {
    return frame(version, name, static_cast<char>(encoding) + std::string(bytes));
}

/// Returns a frame of version 3 or 4 with content compressed by zlib.
inline std::string compressedFrame(int version, std::string_view name, std::string_view content) {
    uLongf length = ::compressBound(content.size());
    std::string compressed(length, '\0');
    ::compress(reinterpret_cast<Bytef*>(compressed.data()), &length,
               reinterpret_cast<const Bytef*>(content.data()), content.size());
    compressed.resize(length);
    const bool isNew = version == 4;
    std::string result =
        frame(version, name, (isNew ? synchSafe(content.size()) : bigEndian(content.size(), 4)) + compressed);
    result[9] = isNew ? '\x09' : '\x80';
    return result;
}

inline std::string pictureFrame(int version, std::size_t length) {
    const std::string head =
        version == 2 ? std::string("\0JPG\3\0", 6) : std::string("\0image/jpeg\0\3\0", 14);
    return frame(version, version == 2 ? "PIC" : "APIC", head + std::string(length, '\xA5'));
}

/// Returns an ID3 header that claims this length.
inline std::string id3Header(int version, std::uint64_t length, int flags = 0) {
    return "ID3" + bigEndian(static_cast<std::uint64_t>(version), 1) + '\0' + static_cast<char>(flags) +
           synchSafe(length);
}

inline std::string id3(int version, std::string_view frames, int flags = 0) {
    return id3Header(version, frames.size(), flags) + std::string(frames);
}

/// Returns the bytes with a zero byte after every 0xFF.
inline std::string unsynchronised(std::string_view bytes) {
    std::string result;
    for (const char byte : bytes) {
        result += byte;
        if (byte == '\xFF')
            result += '\0';
    }
    return result;
}

inline std::string id3v1(std::string_view title, std::string_view artist) {
    return "TAG" + padded(title, 30) + padded(artist, 30) + std::string(64, '\0') + '\x0C';
}

inline std::string ape(std::string_view title, std::string_view artist) {
    const auto item = [](std::string_view key, std::string_view value) {
        return littleEndian(value.size(), 4) + littleEndian(0, 4) + std::string(key) + '\0' +
               std::string(value);
    };
    const std::string items = item("Title", title) + item("Artist", artist);
    return items + "APETAGEX" + littleEndian(2000, 4) + littleEndian(items.size() + 32, 4) +
           littleEndian(2, 4) + littleEndian(0, 4) + std::string(8, '\0');
}

/// Returns the number of bytes that this process has read with system calls.
inline double bytesReadByThisProcess() {
    std::ifstream stream("/proc/self/io");
    std::string name;
    double value = 0;
    stream >> name >> value;
    return name == "rchar:" ? value : throw std::runtime_error("no count of the bytes read");
}

/// Returns 0.1 s of real MPEG audio without tags.
inline std::string mpegAudio() {
    const auto bytes = readWholeFile(std::string(ORVALEN_SAMPLES_DIR) + "/Wedding/Speech Intro.mp3");
    if (!bytes)
        throw std::runtime_error(bytes.error().description);
    return *bytes;
}

inline std::string riffChunk(std::string_view name, std::string_view content) {
    return std::string(name) + littleEndian(content.size(), 4) + std::string(content) +
           std::string(content.size() % 2, '\0');
}

inline std::string wav(std::string_view chunks) {
    const std::string format =
        riffChunk("fmt ", littleEndian(1, 2) + littleEndian(1, 2) + littleEndian(8000, 4) +
                              littleEndian(8000, 4) + littleEndian(1, 2) + littleEndian(8, 2));
    return "RIFF" + littleEndian(4 + format.size() + chunks.size(), 4) + "WAVE" + format +
           std::string(chunks);
}

inline std::string aiffChunk(std::string_view name, std::string_view content) {
    return std::string(name) + bigEndian(content.size(), 4) + std::string(content) +
           std::string(content.size() % 2, '\0');
}

inline std::string aiff(std::string_view chunks) {
    return "FORM" + bigEndian(4 + chunks.size(), 4) + "AIFF" + std::string(chunks);
}

/// Returns one box of an MPEG-4 file.
inline std::string box(std::string_view name, std::string_view content) {
    return bigEndian(content.size() + 8, 4) + std::string(name) + std::string(content);
}

/// Returns boxes nested `depth` times.
inline std::string nestedBoxes(std::string_view name, std::size_t depth) {
    std::string result;
    for (; depth > 0; --depth)
        result += bigEndian(depth * 8, 4).append(name);
    return result;
}

inline std::string mpeg4Text(std::string_view name, std::string_view text) {
    return box(name, box("data", bigEndian(1, 4) + bigEndian(0, 4) + std::string(text)));
}

/// Returns an MPEG-4 file with these items in its list.
inline std::string mpeg4(std::string_view items) {
    const std::string handler = box("hdlr", bigEndian(0, 8) + "mdirappl" + std::string(9, '\0'));
    return box("ftyp", "M4A " + bigEndian(0, 4)) +
           box("moov", box("mvhd", std::string(100, '\0')) +
                           box("udta", box("meta", bigEndian(0, 4) + handler + box("ilst", items)))) +
           box("mdat", std::string(400, '\0'));
}

} // namespace orvalen::test
