#include "online/PageText.h"

#include <gtest/gtest.h>

#include <utility>

namespace online {
namespace {

TEST(PageTextTest, ReadsAFieldHoweverItIsWritten)
{
    const std::pair<std::string, std::string> rows[] = {
        {R"(<input type=hidden name="F" value="a b">)", "a b"},
        {"<INPUT VALUE='a \"b\"' NAME=f>", "a \"b\""},
        {"<input\n\tname = F\n value=a/b?c=d&amp;e />", "a/b?c=d&e"},
        {"<input id=f value=byid>", "byid"},
        {"<textarea name=F>one <b>two</b>\n&lt;three</TEXTAREA >", "one <b>two</b>\n<three"},
        {"<textarea name=F>never closed", "never closed"},
        {"<input name=F value=first><input name=F value=second>", "first"},
        {"<input name=F value=first value=second>", "first"},
        {"<input name=G value=F><input value=x name=F>", "x"},
        {"<!-- <input name=F value=no> --><input name=F value=yes>", "yes"},
        {"<script>document.write('<input name=F value=no>')</script><input name=F value=yes>", "yes"},
        {"<title><input name=F value=no></title><style><input name=F value=no></style>", ""},
        {"<input name=F value=\"&#65;&#x42;&#X63;&euro;&uuml;&quot;\">", "ABc\u20AC\u00FC\""},
        {"<input name=F value=\"&nothing; &#xD800; &#1114112; &#; &amp\">", "&nothing; \uFFFD \uFFFD &#; &amp"},
        {"<input name=F value=\"a\x01"
         "b\x7F\u0085\u202Ec\xFF\">",
         "a b   c\uFFFD"},
        {"<input name=F>", ""},
        {"<input name=F value=\"broken off", ""},
        {"< input name=F value=x>", ""},
        {"<p>F=x</p><", ""},
    };
    for (const auto& [html, expected] : rows)
        EXPECT_EQ(PageText{html}.Value("F", 100), expected) << html;
    EXPECT_FALSE(PageText{"<input name=F value=\"broken off"}.Has("F"));
}

TEST(PageTextTest, ReadsTheTitleAndTheFirstPictureWithItsLink)
{
    const PageText page{
        "<html><head><Title>Page Not&nbsp;Found</title><title>other</title></head><a href=unused></a>"
        "<a href='http://a.example/?x=1&amp;y=2'><b><img alt=News src=\"b.gif\"></b></a><img src=c.gif>"};
    EXPECT_EQ(page.Title(), "Page Not Found");
    EXPECT_EQ(page.FirstPicture().source, "b.gif");
    EXPECT_EQ(page.FirstPicture().link, "http://a.example/?x=1&y=2");
    EXPECT_EQ(page.FirstPicture().text, "News");
    EXPECT_EQ(PageText{"<a href=x></a><img src=a.gif>"}.FirstPicture().link, "");
}

TEST(PageTextTest, ReadsNoMoreThanItsBounds)
{
    const std::string late = std::string(PageText::Longest, ' ') + "<input name=F value=x>";
    EXPECT_FALSE(PageText{late}.Has("F"));
    EXPECT_TRUE(PageText{late.substr(30)}.Has("F"));
    EXPECT_EQ(PageText{"<input name=F value='a\U0001F600b'>"}.Value("F", 2), "a") << "no character is cut in two";
}

} // namespace
} // namespace online
