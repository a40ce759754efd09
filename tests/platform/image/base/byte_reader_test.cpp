// Tests of reading numbers and blocks of bytes, and of reading past their end.
#include "src/platform/image/base/byte_reader.h"

#include <gtest/gtest.h>

#include <array>

static constexpr std::array<std::uint8_t, 8> kBytes = {0x81, 0x02, 0x03, 0x84, 5, 6, 7, 8};

TEST(ByteReader, ReadsBothByteOrders)
{
    EXPECT_EQ(ByteReader(kBytes).U8(), 0x81);
    EXPECT_EQ(ByteReader(kBytes).U16Le(), 0x0281);
    EXPECT_EQ(ByteReader(kBytes).U16Be(), 0x8102);
    EXPECT_EQ(ByteReader(kBytes).U32Le(), 0x84030281u);
    EXPECT_EQ(ByteReader(kBytes).U32Be(), 0x81020384u);
    EXPECT_EQ(ByteReader(kBytes).I32Le(), static_cast<std::int32_t>(0x84030281u));
    EXPECT_EQ(ByteReader(Bytes(kBytes).subspan(2)).I16Le(), static_cast<std::int16_t>(0x8403));
}

TEST(ByteReader, AdvancesPastWhatItReads)
{
    ByteReader reader(kBytes);

    EXPECT_EQ(reader.U8(), 0x81);
    EXPECT_EQ(reader.Take(3).data(), kBytes.data() + 1);
    EXPECT_EQ(reader.Left(), 4u);
    EXPECT_EQ(reader.U32Le(), 0x08070605u);
    EXPECT_EQ(reader.Left(), 0u);
    EXPECT_TRUE(reader.Take(0).empty());
    EXPECT_FALSE(reader.Failed());
}

TEST(ByteReader, StaysFailedAfterFirstReadPastEnd)
{
    ByteReader reader(Bytes(kBytes).first(3));

    EXPECT_EQ(reader.U32Le(), 0u);
    EXPECT_TRUE(reader.Failed());
    EXPECT_EQ(reader.Left(), 0u);
    EXPECT_EQ(reader.U8(), 0) << "although bytes are left";
    EXPECT_TRUE(reader.Take(1).empty());
    EXPECT_TRUE(reader.Failed());
}

TEST(ByteReader, RejectsCountsThatWouldOverflow)
{
    ByteReader reader(kBytes);
    reader.U8();

    EXPECT_TRUE(reader.Take(UINT64_MAX).empty());
    EXPECT_TRUE(reader.Failed());
}

TEST(ByteReader, ReadsNothingFromEmptyInput)
{
    ByteReader reader(Bytes{});

    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.U8(), 0);
    EXPECT_TRUE(reader.Failed());
}
