// Tests of the two finders of copies in a PNG's rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "src/platform/image/deflate/quick_copies.h"
#include "src/platform/image/deflate/thorough_copies.h"

namespace
{

using Block = std::vector<std::uint8_t>;

constexpr std::size_t kBackSlack = 64;

// What a drawing's rows are like: words of a small vocabulary between stretches of nothing and of noise.
Block aDrawing(std::size_t nBytes, unsigned nSeed, unsigned nValues)
{
    std::mt19937 objRandom(nSeed);
    Block aWords(4096);
    for (std::uint8_t& n : aWords)
        n = static_cast<std::uint8_t>(objRandom() % nValues);
    Block aBytes;
    while (aBytes.size() < nBytes) {
        const std::size_t nLength = 1 + objRandom() % 90;
        const auto itWord = aWords.begin() + static_cast<std::ptrdiff_t>(objRandom() % 4000);
        switch (objRandom() % 8) {
            case 0:
                aBytes.insert(aBytes.end(), nLength * 6, 0);
                break;
            case 1:
                for (std::size_t i = 0; i < nLength; ++i)
                    aBytes.push_back(static_cast<std::uint8_t>(objRandom() % nValues));
                break;
            default:
                aBytes.insert(aBytes.end(), itWord, itWord + static_cast<std::ptrdiff_t>(nLength));
        }
    }
    aBytes.resize(nBytes);
    return aBytes;
}

// Appends what the tokens stand for to aDone, which holds the stream so far. False if a copy reaches too far.
bool bUnpack(const PngTokens& aTokens, const std::uint8_t* pBytes, Block& aDone)
{
    const std::size_t nBegin = aDone.size();
    for (const PngToken& objToken : aTokens) {
        const std::uint8_t* const pLiterals = pBytes + (aDone.size() - nBegin);
        aDone.insert(aDone.end(), pLiterals, pLiterals + objToken.nLiterals);
        if (objToken.nLength > 0 && (objToken.nDistance == 0 || objToken.nDistance > aDone.size() ||
                                     objToken.nDistance > kPngWindow || objToken.nLength > kPngLongestCopy))
            return false;
        for (std::size_t i = 0; i < objToken.nLength; ++i)
            aDone.push_back(aDone[aDone.size() - objToken.nDistance]);
    }
    return true;
}

// The tokens of a stream that is looked through in strips, as the writer does it: with the window in front
// that copies may reach back to, and bytes of nobody's around. What is unpacked must be the stream.
template <typename Finder, typename Find>
PngTokens aTokensOf(const Block& aStream, std::size_t nStrip, std::uint8_t nAround, const Find& objFind)
{
    Block aBuffer(PngQuickCopies::kFrontSlack + kPngWindow + nStrip + kBackSlack, nAround);
    std::uint8_t* const pBuffer = aBuffer.data() + PngQuickCopies::kFrontSlack;
    Finder objFinder;
    PngTokens aAll;
    Block aDone;
    std::size_t nFilled = 0;
    for (std::size_t nAt = 0; nAt < aStream.size();) {
        const std::size_t nBytes = std::min(nStrip, aStream.size() - nAt);
        std::copy_n(aStream.data() + nAt, nBytes, pBuffer + nFilled);
        PngTokens aTokens;
        objFind(objFinder, pBuffer, nFilled, nFilled + nBytes, aTokens);
        EXPECT_TRUE(bUnpack(aTokens, pBuffer + nFilled, aDone));
        aAll.insert(aAll.end(), aTokens.begin(), aTokens.end());
        nAt += nBytes;
        nFilled += nBytes;
        const std::size_t nMoved = nFilled - std::min<std::size_t>(nFilled, kPngWindow);
        std::copy(pBuffer + nMoved, pBuffer + nFilled, pBuffer);
        objFinder.Moved(nMoved);
        nFilled -= nMoved;
    }
    EXPECT_TRUE(aDone == aStream);
    return aAll;
}

PngTokens aQuickTokens(const Block& aStream, std::size_t nStrip, bool bNoise, std::uint8_t nAround = 0)
{
    return aTokensOf<PngQuickCopies>(
        aStream, nStrip, nAround,
        [bNoise](PngQuickCopies& objFinder, const std::uint8_t* p, std::size_t nBegin, std::size_t nEnd,
                 PngTokens& aTokens) { objFinder.Find(p, nBegin, nEnd, bNoise, aTokens); });
}

PngTokens aThoroughTokens(const Block& aStream, std::size_t nStrip, std::uint8_t nAround = 0)
{
    return aTokensOf<PngThoroughCopies>(
        aStream, nStrip, nAround,
        [](PngThoroughCopies& objFinder, const std::uint8_t* p, std::size_t nBegin, std::size_t nEnd,
           PngTokens& aTokens) { objFinder.Find(p, nBegin, nEnd, aTokens); });
}

std::size_t nLiteralsOf(const PngTokens& aTokens)
{
    std::size_t nSum = 0;
    for (const PngToken& objToken : aTokens)
        nSum += objToken.nLiterals;
    return nSum;
}

bool bSame(const PngTokens& aOne, const PngTokens& aOther)
{
    return std::equal(
        aOne.begin(), aOne.end(), aOther.begin(), aOther.end(), [](const PngToken& a, const PngToken& b) {
            return a.nLiterals == b.nLiterals && a.nLength == b.nLength && a.nDistance == b.nDistance;
        });
}

}  // namespace

TEST(PngCopies, StandForTheBytesWhateverTheStripsAndTheValues)
{
    for (const unsigned nValues : {2U, 10U, 16U, 40U, 256U})
        for (const std::size_t nStrip : {1U, 3U, 9U, 1000U, 40000U, 131072U}) {
            SCOPED_TRACE(std::to_string(nValues) + " values, strips of " + std::to_string(nStrip));
            const Block aStream = aDrawing(nStrip < 100 ? 2000 : 300000, nValues, nValues);
            aQuickTokens(aStream, nStrip, false);
            aQuickTokens(aStream, nStrip, true);
            aThoroughTokens(aStream, nStrip);
        }
}

TEST(PngCopies, AreFoundAcrossStrips)
{
    const Block aWord = aDrawing(3000, 5, 256);
    Block aStream;
    for (int i = 0; i < 60; ++i)
        aStream.insert(aStream.end(), aWord.begin(), aWord.end());

    EXPECT_LT(nLiteralsOf(aQuickTokens(aStream, 3000, false)), 3200U);
    EXPECT_LT(nLiteralsOf(aThoroughTokens(aStream, 3000)), 3200U);
}

TEST(PngCopies, AreTheSameWhateverLiesAroundTheStream)
{
    const Block aStream = aDrawing(200000, 3, 30);

    EXPECT_TRUE(bSame(aQuickTokens(aStream, 50000, false, 0), aQuickTokens(aStream, 50000, false, 17)));
    EXPECT_TRUE(bSame(aQuickTokens(aStream, 50000, true, 0), aQuickTokens(aStream, 50000, true, 17)));
    EXPECT_TRUE(bSame(aThoroughTokens(aStream, 50000, 0), aThoroughTokens(aStream, 50000, 17)));
}

TEST(PngCopies, LeaveFewerLiteralsWhenLookedForThoroughly)
{
    const Block aStream = aDrawing(300000, 9, 200);

    EXPECT_LT(nLiteralsOf(aThoroughTokens(aStream, 100000)),
              nLiteralsOf(aQuickTokens(aStream, 100000, true)));
}

TEST(PngCopies, OfASampleDoNotTellOfWhatLiesBeforeIt)
{
    const Block aStream = aDrawing(60000, 4, 100);
    Block aBuffer(PngQuickCopies::kFrontSlack, 0);
    aBuffer.insert(aBuffer.end(), aStream.begin(), aStream.end());
    aBuffer.resize(aBuffer.size() + kBackSlack);
    const std::uint8_t* const pBuffer = aBuffer.data() + PngQuickCopies::kFrontSlack;
    PngQuickCopies objFresh;
    PngQuickCopies objSampled;
    PngTokens aFresh;
    PngTokens aTokens;

    objSampled.Find(pBuffer, 30000, 38000, false, aTokens, 16384);
    objSampled.Forget();
    objSampled.Find(pBuffer, 0, 60000, false, aTokens);
    objFresh.Find(pBuffer, 0, 60000, false, aFresh);

    EXPECT_TRUE(bSame(aTokens, aFresh));
}
