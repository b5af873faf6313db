#include "documents/Dates.h"
#include "tests/documents/ReadText.h"

namespace documents {
namespace {

constexpr bool Local = true;

TEST(DatesTest, ReadsTheNotationsOfDocuments)
{
    const struct {
        std::optional<Date> found, expected;
    } cases[] = {
        {ParseIsoDate("2004-03-07T17:07:09Z"), Date{At(67, 17, 7, 9)}},
        {ParseIsoDate("2004-03-07T17:07:09.123456789+01:30"), Date{At(67, 15, 37, 9)}},
        {ParseIsoDate("2004-03-07T17:07:09-08:00"), Date{At(68, 1, 7, 9)}},
        {ParseIsoDate("2004-03-07T17:07:09.5"), Date{At(67, 17, 7, 9), Local}},
        {ParseIsoDate("2004-03-07"), Date{At(67, 0, 0), Local}},
        {ParseIsoDate("2004"), Date{At(1, 0, 0), Local}},
        {ParseIsoDate("2003-02-29"), std::nullopt},
        {ParseIsoDate("2004-13-01"), std::nullopt},
        {ParseIsoDate("yesterday"), std::nullopt},
        {ParseIsoDate(""), std::nullopt},
        {ParsePdfDate("D:20040307170709+01'00'"), Date{At(67, 16, 7, 9)}},
        {ParsePdfDate("D:20040307170709-0530"), Date{At(67, 22, 37, 9)}},
        {ParsePdfDate("D:20040307170709Z00'00'"), Date{At(67, 17, 7, 9)}},
        {ParsePdfDate("200403071707"), Date{At(67, 17, 7), Local}},
        {ParsePdfDate("D:2004"), Date{At(1, 0, 0), Local}},
        {ParsePdfDate("D:00000000000000"), std::nullopt},
        {ParsePdfDate("D:20040307250000"), std::nullopt},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(cases[i].found, cases[i].expected) << i;
}

} // namespace
} // namespace documents
