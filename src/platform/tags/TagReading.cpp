#include "platform/tags/TagReading.h"

#include "platform/tags/Id3Tag.h"
#include "platform/tags/Mpeg4Boxes.h"
#include "platform/tags/TagLibText.h"

#include <algorithm>
#include <taglib/apetag.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4atom.h>
#include <taglib/mp4tag.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/textidentificationframe.h>
#include <taglib/tfile.h>

namespace orvalen {

namespace {

/// Tags of the old kinds and of MPEG-4 beyond this are no names and tempos.
constexpr std::uint64_t mostBytes = 1 << 20;

TagLib::ByteVector toByteVector(const std::string& bytes) {
    return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

/// The bytes of a tag in the shape in which TagLib's readers of single tags ask for them.
class TagBytes : public TagLib::File {
public:
    explicit TagBytes(const std::string& bytes)
        : TagBytes(std::make_unique<TagLib::ByteVectorStream>(toByteVector(bytes))) {}
    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }

private:
    explicit TagBytes(std::unique_ptr<TagLib::ByteVectorStream> stream)
        : TagLib::File(stream.get()), stream_(std::move(stream)) {}

    std::unique_ptr<TagLib::ByteVectorStream> stream_;
};

MetadataItem item(std::string identifier, std::string commonKey, std::optional<std::string> value) {
    return {std::move(identifier), std::move(commonKey), std::move(value)};
}

bool has(const FileTags& tags, std::string_view commonKey) {
    return std::any_of(tags.common.begin(), tags.common.end(),
                       [&](const MetadataItem& each) { return each.commonKey == commonKey; });
}

/// For tags that cannot tell an empty field from none.
void addUnlessEmpty(FileTags& tags, std::string commonKey, const TagLib::String& value) {
    if (!value.isEmpty())
        tags.common.push_back(item({}, std::move(commonKey), toUtf8(value)));
}

void addTitleAndArtist(FileTags& tags, const TagLib::Tag& tag) {
    addUnlessEmpty(tags, "title", tag.title());
    addUnlessEmpty(tags, "artist", tag.artist());
}

std::string commonKeyOf(std::string_view frame) {
    return frame == "TIT2" ? "title" : frame == "TPE1" ? "artist" : "";
}

std::optional<std::string> valueOf(const TagLib::ID3v2::Frame& frame) {
    const auto* text = dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(&frame);
    if (!text)
        return {}; // encrypted
    const TagLib::StringList values = text->fieldList();
    return values.isEmpty() ? std::string() : toUtf8(values.front());
}

void readId3(FileTags& tags, const ByteSource& file, std::uint64_t place) {
    const std::string bytes = smallId3Tag(file, place);
    if (bytes.empty())
        return;
    tags.formats.emplace_back(id3Format);
    TagBytes stream(bytes);
    const TagLib::ID3v2::Tag tag(&stream, 0);
    for (const TagLib::ID3v2::Frame* frame : tag.frameList()) {
        const TagLib::ByteVector id = frame->frameID();
        const std::string name(id.data(), id.size());
        tags.id3.push_back(item("id3/" + name, commonKeyOf(name), valueOf(*frame)));
        if (!tags.id3.back().commonKey.empty())
            tags.common.push_back(tags.id3.back());
    }
}

std::string box(std::string_view name, const std::string& content) {
    const auto length = static_cast<std::uint32_t>(content.size() + 8);
    std::string result;
    for (int shift = 24; shift >= 0; shift -= 8)
        result += static_cast<char>(length >> shift & 0xFF);
    return result.append(name) + content;
}

/// A file of nothing but the item list, and that without pictures.
std::string smallMpeg4File(const ByteSource& file, const ByteRange& itemList) {
    std::string items;
    for (const Mpeg4Box& each : boxesIn(file, itemList)) {
        if (each.name == "covr" || items.size() + each.content.length > mostBytes)
            continue;
        items +=
            box(each.name, file.read(each.content.offset, static_cast<std::size_t>(each.content.length)));
    }
    const std::string version(4, '\0');
    return box("moov", box("udta", box("meta", version + box("ilst", items))));
}

void readItemList(FileTags& tags, const ByteSource& file, const ByteRange& itemList) {
    tags.formats.emplace_back("mp4");
    TagBytes stream(smallMpeg4File(file, itemList));
    TagLib::MP4::Atoms atoms(&stream);
    const TagLib::MP4::Tag tag(&stream, &atoms);
    const auto add = [&](const char* name, const char* commonKey) {
        if (!tag.contains(name))
            return;
        const TagLib::StringList values = tag.item(name).toStringList();
        tags.common.push_back(item(std::string("itsk/") + name, commonKey,
                                   values.isEmpty() ? std::string() : toUtf8(values.front())));
    };
    add("\251nam", "title");
    add("\251ART", "artist");
}

TagLib::ByteVector bytesOf(const ByteSource& file, const ByteRange& range) {
    return toByteVector(file.read(range.offset, static_cast<std::size_t>(std::min(range.length, mostBytes))));
}

void readInfo(FileTags& tags, const ByteSource& file, const ByteRange& range) {
    tags.formats.emplace_back("info");
    addTitleAndArtist(tags, TagLib::RIFF::Info::Tag(bytesOf(file, range)));
}

void readChunkText(FileTags& tags, const ByteSource& file, const std::optional<ByteRange>& range,
                   const char* commonKey) {
    if (range)
        addUnlessEmpty(tags, commonKey, fromUtf8OrLatin1(bytesOf(file, *range)).stripWhiteSpace());
}

void readEndTags(FileTags& tags, const ByteSource& file) {
    const EndTags places = findEndTags(file);
    if (places.ape && places.ape->length <= mostBytes) {
        TagBytes stream(file.read(places.ape->offset, static_cast<std::size_t>(places.ape->length)));
        const auto footerPlace = static_cast<long>(places.ape->length) - 32;
        addTitleAndArtist(tags, TagLib::APE::Tag(&stream, footerPlace));
    }
    if (places.id3v1) {
        TagBytes stream(file.read(places.id3v1->offset, static_cast<std::size_t>(places.id3v1->length)));
        addTitleAndArtist(tags, TagLib::ID3v1::Tag(&stream, 0));
    }
}

} // namespace

FileTags readTags(const ByteSource& file, const TagPlaces& places) {
    FileTags tags;
    if (places.id3)
        readId3(tags, file, *places.id3);
    if (places.itemList)
        readItemList(tags, file, *places.itemList);
    if (has(tags, "title") && has(tags, "artist"))
        return tags; // nothing behind these would be asked for
    if (places.info)
        readInfo(tags, file, *places.info);
    readChunkText(tags, file, places.name, "title");
    readChunkText(tags, file, places.author, "artist");
    if (places.mayHaveEndTags)
        readEndTags(tags, file);
    return tags;
}

} // namespace orvalen
