// Writes deflate blocks.
#include "src/platform/image/deflate/blocks.h"

#include <algorithm>

static constexpr std::uint32_t kLongestDistanceCode = 15;
static constexpr std::uint32_t kLongestRunCode = 7;
static constexpr std::size_t kMaxStored = 65535;
static constexpr std::uint32_t kStoredHead = 40;  // bits, without the padding before it
// The order of the code lengths' own code lengths (RFC 1951, 3.2.7): those most often 0 come last.
static constexpr std::array<std::uint8_t, 19> kRunOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                           11, 4,  12, 3, 13, 2, 14, 1, 15};
static constexpr std::array<std::uint8_t, 3> kRunExtraBits = {2, 3, 7};  // of 16, 17 and 18

PngCosts FirstPngCosts()
{
    PngCosts costs;
    costs.literal.fill(6);
    costs.length.fill(7);
    for (std::size_t i = 0; i < costs.distance.size(); ++i)
        costs.distance[i] =
            static_cast<std::uint8_t>(2 + PngDistanceExtraBits(static_cast<std::uint32_t>(i)));
    costs.min_literal = 2;  // too low costs time, too high costs matches
    costs.min_match = 8;
    return costs;
}

PngBlock::PngBlock(const PngTokens& tokens, const std::uint8_t* bytes, std::size_t byte_count)
    : tokens_(tokens), bytes_(bytes), byte_count_(byte_count)
{
    Count();
    MakePngCodes(counts_.literals, kPngLongestCode, std::span(literals_).first(kPngLiteralCodes));
    MakePngCodes(counts_.distances, kLongestDistanceCode, distances_);
    PlanHeader();
    bits_ += BitsWith(literals_, distances_);

    const std::uint64_t stored = 8 * byte_count + (byte_count / kMaxStored + 1) * kStoredHead;
    if (stored < bits_) {
        form_ = Form::kStored;
        bits_ = stored;
    }
    // Fixed codes need no header; they only win where that is much of the block.
    if (byte_count > 2048)
        return;
    std::array<PngCode, kPngLiteralCodes + 2> literals{};
    std::array<PngCode, kPngDistanceCodes> distances{};
    for (std::size_t i = 0; i < literals.size(); ++i)
        literals[i].length = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
    for (PngCode& code : distances)
        code.length = 5;
    const std::uint64_t fixed = 3 + BitsWith(literals, distances);
    if (fixed < bits_) {
        form_ = Form::kFixed;
        bits_ = fixed;
        FillPngCodes(literals);
        FillPngCodes(distances);
        literals_ = literals;
        distances_ = distances;
    }
}

void PngBlock::Count()
{
    // Neighbours are often equal, and incrementing a counter that was just written stalls: rotate four
    // counters.
    std::array<std::array<std::uint32_t, 256>, 4> turns{};
    const std::uint8_t* p = bytes_;
    for (const PngToken& token : tokens_) {
        const std::uint8_t* const end = p + token.literals;
        for (; end - p >= 8; p += 8) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, p, 8);
            for (std::size_t i = 0; i < 8; ++i, eight >>= 8)
                ++turns[i & 3][eight & 0xFF];
        }
        for (; p != end; ++p)
            ++turns[0][*p];
        if (token.length == 0)
            continue;
        const std::uint32_t symbol = kPngLengthCodes.symbol[token.length - kPngShortestMatch];
        const std::uint32_t distance = PngDistanceSymbol(token.distance);
        ++counts_.literals[kPngBlockEnd + 1 + symbol];
        ++counts_.distances[distance];
        counts_.extra_bits += kPngLengthCodes.extra_bits[symbol] + PngDistanceExtraBits(distance);
        p += token.length;
    }
    for (std::size_t i = 0; i < 256; ++i)
        counts_.literals[i] = turns[0][i] + turns[1][i] + turns[2][i] + turns[3][i];
    counts_.literals[kPngBlockEnd] = 1;
}

std::uint64_t PngBlock::BitsWith(const std::array<PngCode, kPngLiteralCodes + 2>& literals,
                                 const std::array<PngCode, kPngDistanceCodes>& distances) const
{
    std::uint64_t bits = counts_.extra_bits;
    for (std::size_t i = 0; i < kPngLiteralCodes; ++i)
        bits += std::uint64_t{counts_.literals[i]} * literals[i].length;
    for (std::size_t i = 0; i < kPngDistanceCodes; ++i)
        bits += std::uint64_t{counts_.distances[i]} * distances[i].length;
    return bits;
}

// Encodes the lengths of all codes: run-length coded (16 repeats the previous length, 17 and 18 repeat 0),
// then Huffman coded.
void PngBlock::PlanHeader()
{
    std::array<std::uint8_t, kPngLiteralCodes + kPngDistanceCodes> lengths{};
    literal_codes_ = kPngLiteralCodes;
    while (literal_codes_ > 257 && literals_[literal_codes_ - 1].length == 0)
        --literal_codes_;
    distance_codes_ = kPngDistanceCodes;
    while (distance_codes_ > 1 && distances_[distance_codes_ - 1].length == 0)
        --distance_codes_;
    std::size_t length_count = 0;
    for (std::size_t i = 0; i < literal_codes_; ++i)
        lengths[length_count++] = static_cast<std::uint8_t>(literals_[i].length);
    for (std::size_t i = 0; i < distance_codes_; ++i)
        lengths[length_count++] = static_cast<std::uint8_t>(distances_[i].length);

    std::array<std::uint32_t, 19> counts{};
    std::uint64_t extra_bits = 0;
    const auto add = [&](std::size_t symbol, std::size_t extra) {
        runs_[run_count_++] = {static_cast<std::uint8_t>(symbol), static_cast<std::uint8_t>(extra)};
        ++counts[symbol];
        extra_bits += symbol >= 16 ? kRunExtraBits[symbol - 16] : 0U;
    };
    for (std::size_t i = 0; i < length_count;) {
        std::size_t same = 1;
        while (i + same < length_count && lengths[i + same] == lengths[i])
            ++same;
        i += same;
        const std::uint8_t length = lengths[i - 1];
        if (length == 0) {
            for (; same >= 11; same -= std::min<std::size_t>(same, 138))
                add(18, std::min<std::size_t>(same, 138) - 11);
            if (same >= 3) {
                add(17, same - 3);
                same = 0;
            }
        } else {
            add(length, 0);
            --same;
            for (; same >= 3; same -= std::min<std::size_t>(same, 6))
                add(16, std::min<std::size_t>(same, 6) - 3);
        }
        for (; same > 0; --same)
            add(length, 0);
    }
    MakePngCodes(counts, kLongestRunCode, run_codes_);
    run_code_count_ = kRunOrder.size();
    while (run_code_count_ > 4 && run_codes_[kRunOrder[run_code_count_ - 1]].length == 0)
        --run_code_count_;
    bits_ = 3 + 5 + 5 + 4 + 3 * run_code_count_ + extra_bits;
    for (std::size_t i = 0; i < counts.size(); ++i)
        bits_ += std::uint64_t{counts[i]} * run_codes_[i].length;
}

PngCosts PngBlock::Costs() const
{
    // Symbols that didn't occur cost about as much as one that occurred once.
    constexpr std::uint32_t kRareLiteral = 13;
    constexpr std::uint32_t kRareLength = 10;
    constexpr std::uint32_t kRareDistance = 8;
    if (form_ == Form::kStored)
        return FirstPngCosts();
    PngCosts costs;
    costs.min_literal = kRareLiteral;
    for (std::size_t i = 0; i < costs.literal.size(); ++i) {
        const std::uint32_t cost = literals_[i].length ? literals_[i].length : kRareLiteral;
        costs.literal[i] = static_cast<std::uint8_t>(cost);
        costs.min_literal = std::min(costs.min_literal, cost);
    }
    std::uint32_t min_length = kRareLength;
    for (std::uint32_t length = kPngShortestMatch; length <= kPngLongestMatch; ++length) {
        const std::uint32_t symbol = kPngLengthCodes.symbol[length - kPngShortestMatch];
        const std::uint32_t bits = literals_[kPngBlockEnd + 1 + symbol].length;
        const std::uint32_t cost = (bits ? bits : kRareLength) + kPngLengthCodes.extra_bits[symbol];
        costs.length[length] = static_cast<std::uint8_t>(cost);
        min_length = std::min(min_length, cost);
    }
    for (std::uint32_t i = 0; i < kPngDistanceCodes; ++i)
        costs.distance[i] = static_cast<std::uint8_t>(
            (distances_[i].length ? distances_[i].length : kRareDistance) + PngDistanceExtraBits(i));
    costs.min_match = min_length + *std::min_element(costs.distance.begin(), costs.distance.end());
    return costs;
}

void PngBlock::WriteStored(PngBitWriter& writer, bool last) const
{
    for (std::size_t done = 0; done < byte_count_;) {
        const std::size_t here = std::min(byte_count_ - done, kMaxStored);
        writer.Put(last && done + here == byte_count_ ? 1 : 0, 3);
        writer.Align();
        writer.Put(here, 16);
        writer.Put(~here & 0xFFFF, 16);
        writer.Flush();
        std::memcpy(writer.Out(), bytes_ + done, here);
        writer.SetOut(writer.Out() + here);
        done += here;
    }
}

void PngBlock::WriteHeader(PngBitWriter& writer) const
{
    writer.Put(literal_codes_ - 257, 5);
    writer.Put(distance_codes_ - 1, 5);
    writer.Put(run_code_count_ - 4, 4);
    for (std::size_t i = 0; i < run_code_count_; ++i) {
        writer.Put(run_codes_[kRunOrder[i]].length, 3);
        writer.Flush();
    }
    for (std::size_t i = 0; i < run_count_; ++i) {
        const LengthRun run = runs_[i];
        writer.Put(run_codes_[run.symbol]);
        if (run.symbol >= 16)
            writer.Put(run.extra, kRunExtraBits[run.symbol - 16U]);
        writer.Flush();
    }
}

void PngBlock::WriteTokens(PngBitWriter& writer) const
{
    // A length's code and extra bits combined, since there are thousands of runs.
    struct LengthBits {
        std::uint32_t bits;
        std::uint32_t count;
    };
    std::array<LengthBits, 256> lengths;
    for (std::uint32_t i = 0; i < lengths.size(); ++i) {
        const std::uint32_t symbol = kPngLengthCodes.symbol[i];
        const PngCode code = literals_[kPngBlockEnd + 1 + symbol];
        const std::uint32_t extra = i - kPngLengthCodes.first[symbol];
        lengths[i] = {code.bits | extra << code.length,
                      code.length + std::uint32_t{kPngLengthCodes.extra_bits[symbol]}};
    }
    // A literal's code and length in one number, and a local copy of the writer, stay in registers.
    std::array<std::uint32_t, 256> literals;
    for (std::size_t i = 0; i < literals.size(); ++i)
        literals[i] = std::uint32_t{literals_[i].bits} << 8 | literals_[i].length;
    PngBitWriter out = writer;
    const std::uint8_t* p = bytes_;
    for (const PngToken& token : tokens_) {
        const std::uint8_t* const end = p + token.literals;
        for (; end - p >= 4; p += 4) {
            for (std::size_t i = 0; i < 4; ++i) {
                const std::uint32_t literal = literals[p[i]];
                out.Put(literal >> 8, literal & 0xFF);
            }
            out.Flush();
        }
        for (; p != end; ++p)
            out.Put(literals[*p] >> 8, literals[*p] & 0xFF);
        out.Flush();
        if (token.length == 0)
            continue;
        const LengthBits length = lengths[token.length - kPngShortestMatch];
        const std::uint32_t symbol = PngDistanceSymbol(token.distance);
        const std::uint32_t extra_bits = PngDistanceExtraBits(symbol);
        out.Put(length.bits, length.count);
        out.Put(distances_[symbol]);
        out.Put((token.distance - 1U) & ((1U << extra_bits) - 1), extra_bits);
        out.Flush();
        p += token.length;
    }
    out.Put(literals_[kPngBlockEnd]);
    out.Flush();
    writer = out;
}

void PngBlock::Write(PngBitWriter& writer, bool last) const
{
    if (form_ == Form::kStored) {
        WriteStored(writer, last);
        return;
    }
    writer.Put((last ? 1U : 0U) | (form_ == Form::kFixed ? 1U : 2U) << 1, 3);
    if (form_ == Form::kOwn)
        WriteHeader(writer);
    writer.Flush();
    WriteTokens(writer);
}
