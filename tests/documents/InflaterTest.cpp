#include "documents/Inflater.h"
#include "tests/documents/Packed.h"

#include <gtest/gtest.h>

#include <random>

namespace documents {
namespace {

constexpr std::size_t Limit = 1 << 20;

/// What came out, and whether the stream came to its end.
using Outcome = std::pair<std::string, bool>;

/// Asked for in portions of changing size, among other bytes.
Outcome ByOwn(std::string_view packed)
{
    const std::string file = "xxx" + std::string{packed} + "yyy";
    platform::TextSource source{file};
    Inflater inflater{source, 3, packed.size()};
    std::string text;
    for (std::size_t portion = 1, read = 1; read > 0 && text.size() < Limit; portion = portion % 1000 + 7) {
        std::string room(std::min(portion, Limit - text.size()), '\0');
        text += room.substr(0, read = inflater.Read(room));
    }
    return {text, inflater.IsFinished()};
}

std::string Sample(std::mt19937& random)
{
    std::string text;
    const auto letters = 1 + random() % 255;
    for (std::size_t size = random() % 3000; text.size() < size;) {
        if (random() % 4 == 0 && !text.empty())
            text += text.substr(random() % text.size(), random() % 300);
        else
            text += static_cast<char>(random() % letters);
    }
    return random() % 50 == 0 ? text + std::string(40'000, 'x') + text : text; // repetitions from far away
}

TEST(InflaterTest, UnpacksAndRefusesWhatZlibDoes)
{
    std::mt19937 random{13};
    int refused = 0;
    for (int i = 0; i < 1500; ++i) {
        constexpr int strategies[] = {Z_DEFAULT_STRATEGY, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED};
        const std::string text = Sample(random);
        std::string packed = Packed(text, false, static_cast<int>(random() % 10), strategies[random() % 4]);
        ASSERT_EQ(ByOwn(packed), (Outcome{text, true})) << i;
        for (int damage = 0; damage < 8; ++damage) {
            std::string broken = packed;
            for (auto times = random() % 3; times > 0; --times)
                broken[random() % std::min<std::size_t>(broken.size(), 60)] ^= static_cast<char>(1 << random() % 8);
            broken.resize(broken.size() - (damage % 2 == 0 ? 0 : random() % broken.size()));
            const auto [expected, expectedEnd] = Unpacked(broken, Limit);
            const auto [own, ownEnd] = ByOwn(broken);
            ASSERT_EQ(ownEnd, expectedEnd) << i;
            if (expectedEnd)
                ASSERT_EQ(own, expected) << i;
            else
                ASSERT_EQ(own.substr(0, expected.size()), expected.substr(0, own.size())) << i;
            refused += ownEnd ? 0 : 1;
        }
    }
    EXPECT_GT(refused, 1000);
}

TEST(InflaterTest, AWholeStreamHasABound)
{
    const std::string packed = Packed(std::string(50'000, 'x'));
    platform::TextSource source{packed};
    EXPECT_EQ(InflateAll(source, 0, packed.size(), 50'000), std::string(50'000, 'x'));
    EXPECT_EQ(InflateAll(source, 0, packed.size(), 49'999), std::nullopt);
    EXPECT_EQ(InflateAll(source, 0, packed.size() - 1, 50'000), std::nullopt);
}

} // namespace
} // namespace documents
