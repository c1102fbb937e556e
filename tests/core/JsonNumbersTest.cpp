#include "core/JsonNumbers.h"

#include "core/Json.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(JsonNumbers, OnlyNumbersThatFitNowhereAreReplaced) {
    const std::pair<const char*, const char*> cases[] = {
        {R"({"a":9223372036854775807,"b":-9223372036854775808,"c":18446744073709551615})", nullptr},
        {R"([1e308,-0,0.1,128.0,1E+2])", nullptr},
        {R"({"a\"1e999":"99999999999999999999"})", nullptr},
        {R"([01e999,1.e999,--9e999,+9e999,.1e999])", nullptr}, // no JSON numbers
        {R"("no end 99999999999999999999)", nullptr},
        {R"([18446744073709551616 ,-9223372036854775809])", R"([0.5 ,0.5])"},
        {R"({"x":1e400,"y":-1E999})", R"({"x":0.5,"y":0.5})"},
    };
    for (const auto& [json, expected] : cases)
        EXPECT_EQ(withoutOversizedNumbers(json), expected == nullptr ? json : expected);
}

TEST(JsonNumbers, NoDocumentIsUnreadableForAnUnknownMember) {
    const std::string track = R"("title":"T","artist":"A","genre":"","path":"/p","bpm":)";
    const auto session = [&](const std::string& bpm) {
        return R"({"size":123456789012345678901234567890,"matchInput":"","matchedTracks":[{
            "id":"0F8FAD5B-D9CB-469F-A165-70867728950E","title":"T","artist":"A","found":true,
            "options":[{)" +
               track + bpm + R"(}],"include":false,"more":-1e999}]})";
    };
    const auto read = decodeSession(session("9223372036854775807"));
    ASSERT_TRUE(read.has_value()) << read.error().description;
    EXPECT_EQ(read->matchedTracks[0].options[0].bpm, 9223372036854775807);
    EXPECT_FALSE(decodeSession(session("9223372036854775808")).has_value());
    EXPECT_FALSE(decodeSession(session("1e999")).has_value());
    EXPECT_FALSE(decodeTexts(R"(["a",99999999999999999999])").has_value());
}

} // namespace
} // namespace orvalen::test
