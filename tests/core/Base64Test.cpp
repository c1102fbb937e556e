#include "core/Base64.h"

#include <gtest/gtest.h>

namespace orvalen {
namespace {

using namespace std::string_view_literals;

TEST(Base64, WritesAndReadsBackEveryLengthAndByte) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},        {"f", "Zg=="},    {"fo", "Zm8="},
        {"foo", "Zm9v"}, {"\0"sv, "AA=="}, {"\xFB\xFF\xBF"sv, "+/+/"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(base64(bytes), text);
        EXPECT_EQ(fromBase64(text), bytes) << text;
    }
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(fromBase64(base64(all)), all);
}

TEST(Base64, RefusesWhatItWouldNotHaveWritten) {
    for (const std::string_view text :
         {"Zg"sv, "===="sv, "Zg=A"sv, "Zm9v\n"sv, "Zm-_"sv, "Zm9\xC3"sv, "Zh=="sv, "Zm9="sv, "Zm\0v"sv})
        EXPECT_FALSE(fromBase64(text)) << text;
}

} // namespace
} // namespace orvalen
