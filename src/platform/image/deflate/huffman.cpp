// Builds Huffman codes.
#include "src/platform/image/deflate/huffman.h"

#include <algorithm>
#include <array>

static constexpr std::size_t kMaxSymbols = 288;
static constexpr std::uint32_t kSymbolBits = 9;
static constexpr std::uint32_t kMaxDepth = 32;

// Computes the depth of each leaf in the minimum-redundancy tree, in place: ascending weights become
// descending depths. A. Moffat and J. Katajainen, "In-place calculation of minimum-redundancy codes", 1995:
// inner nodes are also created in ascending order of weight, so two queues in one array replace a heap.
static void WeightsToDepths(std::span<std::uint32_t> weights)
{
    const std::size_t leaves = weights.size();
    // Inner node k takes slot k, which leaf k has left by then. A used inner node stores its parent.
    std::size_t leaf = 0;
    std::size_t inner = 0;
    const auto take = [&](std::size_t merged) {
        if (leaf >= leaves || (inner < merged && weights[inner] < weights[leaf])) {
            const std::uint32_t weight = weights[inner];
            weights[inner++] = static_cast<std::uint32_t>(merged);
            return weight;
        }
        return weights[leaf++];
    };
    for (std::size_t merged = 0; merged + 1 < leaves; ++merged) {
        const std::uint32_t first = take(merged);
        weights[merged] = first + take(merged);
    }
    // Turn parent indices into depths, from the root down.
    weights[leaves - 2] = 0;
    for (std::size_t k = leaves - 2; k-- > 0;)
        weights[k] = weights[weights[k]] + 1;
    // Nodes on a level that aren't inner nodes are leaves; the lightest leaves are the deepest.
    std::size_t next_leaf = leaves;
    std::size_t next_inner = leaves - 1;
    std::size_t places = 1;
    for (std::uint32_t depth = 0; places > 0; ++depth) {
        std::size_t inners = 0;
        for (; next_inner > 0 && weights[next_inner - 1] == depth; --next_inner)
            ++inners;
        for (; places > inners; --places)
            weights[--next_leaf] = depth;
        places = 2 * inners;
    }
}

// The number of codes of each length, limited to `longest`. Longer codes are shortened to it; to fit in the
// code space, shorter ones are lengthened by a bit.
static std::array<std::uint32_t, kMaxDepth> LimitDepths(std::span<const std::uint32_t> depths,
                                                        std::uint32_t longest)
{
    std::array<std::uint32_t, kMaxDepth> of_length{};
    std::uint64_t used = 0;  // code space used, in codes of `longest` bits
    for (const std::uint32_t depth : depths) {
        const std::uint32_t length = std::min(depth, longest);
        ++of_length[length];
        used += std::uint64_t{1} << (longest - length);
    }
    for (; used > std::uint64_t{1} << longest; --used) {
        std::uint32_t shorter = longest - 1;
        while (of_length[shorter] == 0)
            --shorter;
        --of_length[longest];
        --of_length[shorter];
        of_length[shorter + 1] += 2;
    }
    return of_length;
}

void FillPngCodes(std::span<PngCode> codes)
{
    std::array<std::uint32_t, 17> next{};
    for (const PngCode& code : codes)
        if (code.length)
            ++next[code.length + 1U];
    std::uint32_t next_code = 0;
    for (std::uint32_t& first : next) {
        next_code = (next_code + first) << 1;  // `first` still holds the number of codes one bit shorter
        first = next_code;
    }
    for (PngCode& code : codes) {
        std::uint32_t forward = next[code.length]++;
        std::uint32_t reversed = 0;
        for (std::uint32_t i = 0; i < code.length; ++i, forward >>= 1)
            reversed = reversed << 1 | (forward & 1);
        code.bits = static_cast<std::uint16_t>(reversed);
    }
}

void MakePngCodes(std::span<const std::uint32_t> counts, std::uint32_t longest, std::span<PngCode> codes)
{
    std::array<std::uint32_t, kMaxSymbols> sorted;  // count, symbol
    std::size_t used = 0;
    for (std::size_t i = 0; i < counts.size(); ++i)
        if (counts[i])
            sorted[used++] = counts[i] << kSymbolBits | static_cast<std::uint32_t>(i);
    for (std::uint32_t symbol = 0; used < 2; ++symbol)
        if (counts[symbol] == 0)
            sorted[used++] = 1U << kSymbolBits | symbol;
    std::sort(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(used));

    std::array<std::uint32_t, kMaxSymbols> depths;
    for (std::size_t i = 0; i < used; ++i)
        depths[i] = sorted[i] >> kSymbolBits;
    WeightsToDepths(std::span(depths).first(used));
    const auto of_length = LimitDepths(std::span(depths).first(used), longest);

    std::fill(codes.begin(), codes.end(), PngCode{});
    std::size_t next = 0;
    for (std::uint32_t length = longest; length > 0; --length)
        for (std::uint32_t i = 0; i < of_length[length]; ++i)
            codes[sorted[next++] & ((1U << kSymbolBits) - 1)].length = static_cast<std::uint16_t>(length);
    FillPngCodes(codes);
}
