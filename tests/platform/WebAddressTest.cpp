#include "platform/WebAddress.h"

#include <gtest/gtest.h>

#include <utility>

using namespace platform;

TEST(WebAddressTest, ValuesAreEncodedByteByByte)
{
    EXPECT_EQ(web_address::Encoded("aZ09-._~"), "aZ09-._~");
    EXPECT_EQ(web_address::Encoded("a b&c=d#%/\u00FC\r\n"), "a%20b%26c%3Dd%23%25%2F%C3%BC%0D%0A");
}

TEST(WebAddressTest, AReferenceLeadsToAWebAddressOrNowhere)
{
    const std::string base = "http://a.example/b/c.asp?d=e/f#g";
    const std::pair<const char*, const char*> rows[] = {
        // clang-format off
        {"x.htm", "http://a.example/b/x.htm"}, {"/x.htm?y#z", "http://a.example/x.htm?y"},
        {"?x", "http://a.example/b/c.asp?x"}, {"", "http://a.example/b/c.asp?d=e/f"},
        {"//b.example/x", "http://b.example/x"}, {"HTTPS://b.example", "HTTPS://b.example"},
        {"../x", "http://a.example/b/../x"}, {"x:y", ""}, {"file:///C:/x.htm", ""}, {"javascript:x()", ""},
        {"http://", ""}, {"https:", ""}, {"\\\\srv\\share", ""}, {"a b", ""},
        // clang-format on
    };
    for (const auto& [reference, expected] : rows)
        EXPECT_EQ(web_address::Resolved(base, reference).value_or(""), expected) << reference;
    EXPECT_EQ(web_address::Resolved("http://a.example", "x"), "http://a.example/x");
    EXPECT_EQ(web_address::Resolved("https://a.example/", "https://b.example/"), "https://b.example/");
    EXPECT_EQ(web_address::Resolved("https://a.example/", "http://a.example/"), std::nullopt) << "nobody listens in";
    EXPECT_EQ(web_address::Resolved("C:\\T\\a.htm", "http://a.example/"), std::nullopt);
}
