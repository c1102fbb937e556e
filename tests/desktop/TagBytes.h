#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvalen::test {

// Tags and containers written by hand, byte by byte, right or wrong as a test wishes.

std::string bigEndian(std::uint64_t number, int bytes);
std::string littleEndian(std::uint64_t number, int bytes);
/// Seven bits a byte, as ID3 writes lengths.
std::string synchSafe(std::uint64_t number);

/// One ID3 frame of the version, its length as that version writes it.
std::string frame(int version, std::string_view name, std::string_view content);
/// A text frame; the encoding 0 is Latin-1, 1 UTF-16 with a mark, 2 UTF-16 big-endian, 3 UTF-8.
std::string textFrame(int version, std::string_view name, int encoding, std::string_view bytes);
/// A frame of version 3 or 4 whose content is compressed with zlib.
std::string compressedFrame(int version, std::string_view name, std::string_view content);
std::string pictureFrame(int version, std::size_t length);
std::string id3(int version, std::string_view frames, int flags = 0);
/// With a zero byte behind every 0xFF.
std::string unsynchronised(std::string_view bytes);
/// An ID3 header that claims so many bytes.
std::string id3Header(int version, std::uint64_t length, int flags = 0);

std::string id3v1(std::string_view title, std::string_view artist);
std::string ape(std::string_view title, std::string_view artist);

/// By its own calls, up to now.
double bytesReadByThisProcess();

/// A tenth of a second of real MPEG audio without any tag.
std::string mpegAudio();

std::string riffChunk(std::string_view name, std::string_view content);
std::string wav(std::string_view chunks);
std::string aiffChunk(std::string_view name, std::string_view content);
std::string aiff(std::string_view chunks);

/// One box of an MPEG-4 file.
std::string box(std::string_view name, std::string_view content);
/// So many boxes, each the only content of the one before.
std::string nestedBoxes(std::string_view name, std::size_t depth);
/// An MPEG-4 file with these items in its list.
std::string mpeg4(std::string_view items);
std::string mpeg4Text(std::string_view name, std::string_view text);

} // namespace orvalen::test
