#pragma once
// What a keyword does to block structure: one row a style. The rows stand in the order of their bits.

#include <bit>
#include <cstdint>
#include <iterator>

namespace nib {

/// `BlockStyle` of a keyword.
namespace block_style {
inline constexpr int16_t kNone = 0;
inline constexpr int16_t kBegin = 1;
inline constexpr int16_t kEnd = 2;
inline constexpr int16_t kMiddle = 3;
} // namespace block_style

/// Where a keyword must stand for its style to count.
enum class BlockPlace : uint8_t { Anywhere, StatementStart, LineEnd };

struct BlockStyleRow {
    int32_t block;
    int16_t style;
    char16_t suffix;
    BlockPlace place;
    bool user; ///< chosen by the suffix in a keyword list; the others belong to reserved words
};

inline constexpr BlockStyleRow kBlockStyles[] = {
    {0x0001, block_style::kBegin, u'+', BlockPlace::StatementStart, false}, // FOR
    {0x0002, block_style::kEnd, u'-', BlockPlace::Anywhere, false},         // NEXT
    {0x0004, block_style::kBegin, u'+', BlockPlace::StatementStart, false}, // LOOP
    {0x0008, block_style::kMiddle, u'=', BlockPlace::Anywhere, false},      // UNTIL, WHILE
    {0x0010, block_style::kBegin, u'+', BlockPlace::Anywhere, false},       // BEGIN
    {0x0020, block_style::kMiddle, u'=', BlockPlace::Anywhere, false},      // CASE
    {0x0040, block_style::kEnd, u'-', BlockPlace::Anywhere, false},         // END
    {0x0080, block_style::kBegin, u'+', BlockPlace::LineEnd, false},        // THEN
    {0x0100, block_style::kBegin, u'+', BlockPlace::LineEnd, false},        // ELSE
    {0x0200, block_style::kBegin, u'+', BlockPlace::LineEnd, false},        // LOCKED
    {0x0400, block_style::kEnd, u'-', BlockPlace::Anywhere, false},         // REPEAT
    {0x0800, block_style::kBegin, u'+', BlockPlace::Anywhere, true},
    {0x1000, block_style::kEnd, u'-', BlockPlace::Anywhere, true},
    {0x2000, block_style::kMiddle, u'=', BlockPlace::Anywhere, true},
    {0x4000, block_style::kBegin, u'[', BlockPlace::StatementStart, true},
    {0x8000, block_style::kBegin, u']', BlockPlace::LineEnd, true},
};

namespace user_block {
inline constexpr int32_t kBegin = 0x0800;
inline constexpr int32_t kEnd = 0x1000;
inline constexpr int32_t kMiddle = 0x2000;
inline constexpr int32_t kBeginFirst = 0x4000;
inline constexpr int32_t kBeginLast = 0x8000;
} // namespace user_block

constexpr int32_t BlocksOfStyle(int16_t style)
{
    int32_t mask = 0;
    for (const BlockStyleRow& row : kBlockStyles)
        if (row.style == style) mask |= row.block;
    return mask;
}

constexpr int32_t BlocksOfPlace(BlockPlace place)
{
    int32_t mask = 0;
    for (const BlockStyleRow& row : kBlockStyles)
        if (row.place == place) mask |= row.block;
    return mask;
}

inline constexpr int32_t kBeginBlocks = BlocksOfStyle(block_style::kBegin);
inline constexpr int32_t kEndBlocks = BlocksOfStyle(block_style::kEnd);
inline constexpr int32_t kStatementStartBlocks = BlocksOfPlace(BlockPlace::StatementStart);
inline constexpr int32_t kLineEndBlocks = BlocksOfPlace(BlockPlace::LineEnd);

/// The row of a single style bit, null for any other value.
constexpr const BlockStyleRow* FindBlockStyle(int32_t block)
{
    auto bits = static_cast<uint32_t>(block);
    if (!std::has_single_bit(bits) || bits >= 1U << std::size(kBlockStyles)) return nullptr;
    return &kBlockStyles[std::countr_zero(bits)];
}

/// The style that a suffix in a keyword list stands for, 0 when it is none.
constexpr int32_t BlockOfSuffix(char16_t suffix)
{
    for (const BlockStyleRow& row : kBlockStyles)
        if (row.user && row.suffix == suffix) return row.block;
    return 0;
}

} // namespace nib
