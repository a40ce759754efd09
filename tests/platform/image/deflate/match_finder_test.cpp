// Tests of the match finder of the PNG writer.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "src/platform/image/deflate/match_finder.h"

namespace
{

using Block = std::vector<std::uint8_t>;

constexpr std::size_t kBackSlack = 64;

// Rows like those of a drawing: words of a small vocabulary between runs of zeros and noise.
Block Drawing(std::size_t byte_count, unsigned seed, unsigned values)
{
    std::mt19937 random(seed);
    Block words(4096);
    for (std::uint8_t& n : words)
        n = static_cast<std::uint8_t>(random() % values);
    Block bytes;
    while (bytes.size() < byte_count) {
        const std::size_t length = 1 + random() % 90;
        const auto word = words.begin() + static_cast<std::ptrdiff_t>(random() % 4000);
        switch (random() % 8) {
            case 0:
                bytes.insert(bytes.end(), length * 6, 0);
                break;
            case 1:
                for (std::size_t i = 0; i < length; ++i)
                    bytes.push_back(static_cast<std::uint8_t>(random() % values));
                break;
            default:
                bytes.insert(bytes.end(), word, word + static_cast<std::ptrdiff_t>(length));
        }
    }
    bytes.resize(byte_count);
    return bytes;
}

// Decodes the tokens onto done, the stream so far. False if a distance reaches too far.
bool Unpack(const PngTokens& tokens, const std::uint8_t* bytes, Block& done)
{
    const std::size_t begin = done.size();
    for (const PngToken& token : tokens) {
        const std::uint8_t* const literals = bytes + (done.size() - begin);
        done.insert(done.end(), literals, literals + token.literals);
        if (token.length > 0 && (token.distance == 0 || token.distance > done.size() ||
                                 token.distance > kPngWindow || token.length > kPngLongestMatch))
            return false;
        for (std::size_t i = 0; i < token.length; ++i)
            done.push_back(done[done.size() - token.distance]);
    }
    return true;
}

// Tokenises a stream in strips like the writer: with the preceding window, which matches may refer to, and
// foreign bytes around. Decoding must restore the stream.
template <typename Finder, typename Find>
PngTokens TokensOf(const Block& stream, std::size_t strip_index, std::uint8_t around, const Find& find)
{
    Block buffer(PngMatchFinder::kFrontSlack + kPngWindow + strip_index + kBackSlack, around);
    std::uint8_t* const strip = buffer.data() + PngMatchFinder::kFrontSlack;
    Finder finder;
    PngTokens all;
    Block done;
    std::size_t filled = 0;
    for (std::size_t at = 0; at < stream.size();) {
        const std::size_t bytes = std::min(strip_index, stream.size() - at);
        std::copy_n(stream.data() + at, bytes, strip + filled);
        PngTokens tokens;
        find(finder, strip, filled, filled + bytes, tokens);
        EXPECT_TRUE(Unpack(tokens, strip + filled, done));
        all.insert(all.end(), tokens.begin(), tokens.end());
        at += bytes;
        filled += bytes;
        const std::size_t moved = filled - std::min<std::size_t>(filled, kPngWindow);
        std::copy(strip + moved, strip + filled, strip);
        finder.ShiftPositions(moved);
        filled -= moved;
    }
    EXPECT_TRUE(done == stream);
    return all;
}

PngTokens QuickTokens(const Block& stream, std::size_t strip, bool is_noise, std::uint8_t around = 0)
{
    return TokensOf<PngMatchFinder>(
        stream, strip, around,
        [is_noise](PngMatchFinder& finder, const std::uint8_t* p, std::size_t begin, std::size_t end,
                   PngTokens& tokens) { finder.Find(p, begin, end, is_noise, tokens); });
}

std::size_t LiteralsOf(const PngTokens& tokens)
{
    std::size_t sum = 0;
    for (const PngToken& token : tokens)
        sum += token.literals;
    return sum;
}

bool IsSame(const PngTokens& one, const PngTokens& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const PngToken& a, const PngToken& b) {
                          return a.literals == b.literals && a.length == b.length && a.distance == b.distance;
                      });
}

}  // namespace

TEST(PngMatches, DecodeToStreamForAnyStripsAndValues)
{
    for (const unsigned values : {2U, 10U, 16U, 40U, 256U})
        for (const std::size_t strip : {1U, 3U, 9U, 1000U, 40000U, 131072U}) {
            SCOPED_TRACE(std::to_string(values) + " values, strips of " + std::to_string(strip));
            const Block stream = Drawing(strip < 100 ? 2000 : 300000, values, values);
            QuickTokens(stream, strip, false);
            QuickTokens(stream, strip, true);
        }
}

TEST(PngMatches, AreFoundAcrossStrips)
{
    const Block word = Drawing(3000, 5, 256);
    Block stream;
    for (int i = 0; i < 60; ++i)
        stream.insert(stream.end(), word.begin(), word.end());

    EXPECT_LT(LiteralsOf(QuickTokens(stream, 3000, false)), 3200U);
}

TEST(PngMatches, DoNotDependOnBytesAroundStream)
{
    const Block stream = Drawing(200000, 3, 30);

    EXPECT_TRUE(IsSame(QuickTokens(stream, 50000, false, 0), QuickTokens(stream, 50000, false, 17)));
    EXPECT_TRUE(IsSame(QuickTokens(stream, 50000, true, 0), QuickTokens(stream, 50000, true, 17)));
}

TEST(PngMatches, AreUnaffectedByEarlierSample)
{
    const Block stream = Drawing(60000, 4, 100);
    Block buffer(PngMatchFinder::kFrontSlack, 0);
    buffer.insert(buffer.end(), stream.begin(), stream.end());
    buffer.resize(buffer.size() + kBackSlack);
    const std::uint8_t* const strip = buffer.data() + PngMatchFinder::kFrontSlack;
    PngMatchFinder fresh;
    PngMatchFinder sampled;
    PngTokens fresh_tokens;
    PngTokens tokens;

    sampled.Find(strip, 30000, 38000, false, tokens, 16384);
    sampled.Forget();
    sampled.Find(strip, 0, 60000, false, tokens);
    fresh.Find(strip, 0, 60000, false, fresh_tokens);

    EXPECT_TRUE(IsSame(tokens, fresh_tokens));
}
