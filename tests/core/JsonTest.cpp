#include "core/Json.h"

#include "core/JsonNumbers.h"
#include "support/Builders.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

const std::string id = "\"id\":\"00112233-4455-6677-8899-aabbccddeeff\"";
const std::string names = R"("title":"T","artist":"A")";
const std::string trackText = R"({"title":"T","artist":"A","genre":"","path":"\/m\/a.mp3","bpm":128})";

std::string session(const std::string& row) {
    return R"({"matchInput":"x","matchedTracks":[)" + row + "]}";
}
std::string rowWith(const std::string& members) {
    return session("{" + id + "," + names + "," + members + "}");
}

TEST(Json, ReadsASessionWithUnknownMembersOfAnySizeAndOptionalOnesMissingOrNull) {
    for (const std::string selected : {R"("selectedTrack":null,)", ""}) {
        const auto read = decodeSession(
            rowWith(R"("found":false,"options":[],)" + selected +
                    R"("include":true,"later":{"deep":[1e999,null]},"size":123456789012345678901)"));
        ASSERT_TRUE(read.has_value()) << read.error().description;
        const MatchedTrack& row = read->matchedTracks.at(0);
        EXPECT_EQ(row.id.toString(), "00112233-4455-6677-8899-AABBCCDDEEFF");
        EXPECT_FALSE(row.found);
        EXPECT_TRUE(row.include);
        EXPECT_FALSE(row.selectedTrack);
        EXPECT_TRUE(row.options.empty());
    }
}

TEST(Json, ReadsATempoAsWrittenOrAsAnEqualNumber) {
    using Case = std::pair<const char*, std::optional<std::int64_t>>;
    for (const auto& [written, bpm] : {Case{"128", 128}, Case{"9223372036854775807", INT64_MAX}, Case{"0", 0},
                                       Case{"-0", 0}, Case{"null", {}}, Case{"128.0", 128},
                                       Case{"1.28e2", 128}, Case{"-9223372036854775808", INT64_MIN}}) {
        std::string text = trackText;
        text.replace(text.find("128"), 3, written);
        const auto read = decodeSession(rowWith(R"("found":true,"include":false,"options":[)" + text + "]"));
        ASSERT_TRUE(read.has_value()) << written;
        EXPECT_EQ(read->matchedTracks[0].options.at(0).bpm, bpm) << written;
    }
}

TEST(Json, ADocumentWithOneBadElementGivesNothing) {
    const std::string good = R"("found":true,"options":[],"include":false)";
    ASSERT_TRUE(decodeSession(rowWith(good)).has_value());
    const auto withOption = [](const std::string& option) {
        return rowWith(R"("found":true,"include":false,"options":[)" + trackText + "," + option + "]");
    };
    ASSERT_TRUE(decodeSession(withOption(trackText)).has_value());
    const std::string documents[] = {
        "",
        "[]",
        R"({"matchInput":"x"})",
        R"({"matchedTracks":[]})",
        R"({"matchInput":"x","matchedTracks":{}})",
        R"({"matchInput":"x","matchedTracks":[]})" + std::string("x"),
        session("1"),
        session("{" + id + ",\"title\":\"T\"," + good + "}"),
        session("{" + names + "," + good + "}"),
        session(R"({"id":"0011",)" + names + "," + good + "}"),
        session("{" + id + R"(,"title":"T","artist":null,)" + good + "}"),
        rowWith(R"("found":1,"options":[],"include":false)"),
        session("{" + id + ",\"artist\":\"A\"," + good + "}"),
        rowWith(R"("found":true,"options":null,"include":false)"),
        rowWith(R"("found":true,"options":[],"include":"false")"),
        rowWith(good + R"(,"selectedTrack":{})"),
        withOption(R"({"title":"T","artist":"A","path":"/p"})"),
        withOption(R"({"title":"T","artist":"A","genre":"","path":"/p","bpm":"128"})"),
        withOption(R"({"title":"T","artist":"A","genre":"","path":"/p","bpm":1.5})"),
        withOption(R"({"title":"T","artist":"A","genre":"","path":"/p","bpm":1e999})"),
        withOption(R"({"title":"T","artist":"A","genre":"","path":"/p","bpm":9223372036854775808})"),
        rowWith(good).replace(5, 1, "\xFF"),
    };
    for (const std::string& document : documents)
        EXPECT_FALSE(decodeSession(document).has_value()) << document;
}

TEST(Json, ListsOfTextsAreArraysOfNothingElse) {
    std::string controls;
    for (char control = 0; control < ' '; ++control)
        controls += std::string(40, 'x') + control; // a writer may look at 16 bytes at a time
    const std::vector<std::string> texts = {"", "a/b+c=", "\"\\\n", "größe", controls};
    EXPECT_EQ(decodeTexts(encodeTexts(texts)).value(), texts);
    EXPECT_EQ(encodeTexts({}), "[]");
    EXPECT_EQ(decodeTexts(R"( ["\/\u00e9"] )").value(), (std::vector<std::string>{"/é"}));
    for (const char* bytes : {"", "{}", "[\"a\",null]", "[\"a\"", "[\"a\"]]", "[\"a\",99999999999999999999]"})
        EXPECT_FALSE(decodeTexts(bytes).has_value()) << bytes;
}

TEST(JsonNumbers, OnlyNumbersThatFitNowhereAreReplaced) {
    const std::pair<const char*, const char*> cases[] = {
        {R"({"a":9223372036854775807,"b":-9223372036854775808,"c":18446744073709551615})", nullptr},
        {R"([1e308,-0,0.1,128.0,1E+2])", nullptr},
        {R"({"a\"1e999":"99999999999999999999"})", nullptr},
        {R"([01e999,1.e999,--9e999,+9e999,.1e999])", nullptr}, // not JSON numbers
        {R"("no end 99999999999999999999)", nullptr},
        {R"([18446744073709551616 ,-9223372036854775809])", R"([0.5 ,0.5])"},
        {R"({"x":1e400,"y":-1E999})", R"({"x":0.5,"y":0.5})"},
    };
    for (const auto& [json, expected] : cases)
        EXPECT_EQ(withoutOversizedNumbers(json), expected == nullptr ? json : expected);
}

} // namespace
} // namespace orvalen::test
