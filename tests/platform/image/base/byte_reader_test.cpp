// Numbers and blocks from bytes, and what happens at their end.
#include "src/platform/image/base/byte_reader.h"

#include <array>

static constexpr std::array<std::uint8_t, 8> kBytes = {0x81, 0x02, 0x03, 0x84, 5, 6, 7, 8};

TEST(ByteReader, ReadsNumbersOfBothByteOrders)
{
    EXPECT_EQ(ByteReader(kBytes).U8(), 0x81);
    EXPECT_EQ(ByteReader(kBytes).U16Le(), 0x0281);
    EXPECT_EQ(ByteReader(kBytes).U16Be(), 0x8102);
    EXPECT_EQ(ByteReader(kBytes).U32Le(), 0x84030281u);
    EXPECT_EQ(ByteReader(kBytes).U32Be(), 0x81020384u);
    EXPECT_EQ(ByteReader(kBytes).I32Le(), static_cast<std::int32_t>(0x84030281u));
    EXPECT_EQ(ByteReader(Bytes(kBytes).subspan(2)).I16Le(), static_cast<std::int16_t>(0x8403));
}

TEST(ByteReader, GoesOnBehindWhatItRead)
{
    ByteReader rd(kBytes);

    EXPECT_EQ(rd.U8(), 0x81);
    EXPECT_EQ(rd.Take(3).data(), kBytes.data() + 1);
    EXPECT_EQ(rd.Left(), 4u);
    EXPECT_EQ(rd.U32Le(), 0x08070605u);
    EXPECT_EQ(rd.Left(), 0u);
    EXPECT_TRUE(rd.Take(0).empty());
    EXPECT_FALSE(rd.Failed());
}

TEST(ByteReader, FailsForGoodWithTheFirstReadPastTheEnd)
{
    ByteReader rd(Bytes(kBytes).first(3));

    EXPECT_EQ(rd.U32Le(), 0u);
    EXPECT_TRUE(rd.Failed());
    EXPECT_EQ(rd.Left(), 0u);
    EXPECT_EQ(rd.U8(), 0) << "though there would be bytes";
    EXPECT_TRUE(rd.Take(1).empty());
    EXPECT_TRUE(rd.Failed());
}

TEST(ByteReader, IsNotFooledByCountsThatWouldWrapRound)
{
    ByteReader rd(kBytes);
    rd.U8();

    EXPECT_TRUE(rd.Take(UINT64_MAX).empty());
    EXPECT_TRUE(rd.Failed());
}

TEST(ByteReader, ReadsNothingFromNothing)
{
    ByteReader rd(Bytes{});

    EXPECT_FALSE(rd.Failed());
    EXPECT_EQ(rd.U8(), 0);
    EXPECT_TRUE(rd.Failed());
}
