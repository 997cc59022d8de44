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

/// Which of the words that shape blocks: a keyword is one of them, a line holds those of all its keywords.
namespace block {
inline constexpr int32_t kFor = 0x0001;
inline constexpr int32_t kNext = 0x0002;
inline constexpr int32_t kLoop = 0x0004;
inline constexpr int32_t kUntilWhile = 0x0008;
inline constexpr int32_t kBegin = 0x0010;
inline constexpr int32_t kCase = 0x0020;
inline constexpr int32_t kEnd = 0x0040;
inline constexpr int32_t kThen = 0x0080;
inline constexpr int32_t kElse = 0x0100;
inline constexpr int32_t kLocked = 0x0200;
inline constexpr int32_t kRepeat = 0x0400;
inline constexpr int32_t kUserBegin = 0x0800;
inline constexpr int32_t kUserEnd = 0x1000;
inline constexpr int32_t kUserMiddle = 0x2000;
inline constexpr int32_t kUserBeginFirst = 0x4000;
inline constexpr int32_t kUserBeginLast = 0x8000;
inline constexpr int32_t kAny = 0xFFFF;
} // namespace block

struct BlockStyleRow {
    int32_t block;
    int16_t style;
    char16_t suffix;
    BlockPlace place;
    bool user; ///< chosen by the suffix in a keyword list; the others belong to reserved words
};

inline constexpr BlockStyleRow kBlockStyles[] = {
    {block::kFor, block_style::kBegin, u'+', BlockPlace::StatementStart, false},
    {block::kNext, block_style::kEnd, u'-', BlockPlace::Anywhere, false},
    {block::kLoop, block_style::kBegin, u'+', BlockPlace::StatementStart, false},
    {block::kUntilWhile, block_style::kMiddle, u'=', BlockPlace::Anywhere, false},
    {block::kBegin, block_style::kBegin, u'+', BlockPlace::Anywhere, false},
    {block::kCase, block_style::kMiddle, u'=', BlockPlace::Anywhere, false},
    {block::kEnd, block_style::kEnd, u'-', BlockPlace::Anywhere, false},
    {block::kThen, block_style::kBegin, u'+', BlockPlace::LineEnd, false},
    {block::kElse, block_style::kBegin, u'+', BlockPlace::LineEnd, false},
    {block::kLocked, block_style::kBegin, u'+', BlockPlace::LineEnd, false},
    {block::kRepeat, block_style::kEnd, u'-', BlockPlace::Anywhere, false},
    {block::kUserBegin, block_style::kBegin, u'+', BlockPlace::Anywhere, true},
    {block::kUserEnd, block_style::kEnd, u'-', BlockPlace::Anywhere, true},
    {block::kUserMiddle, block_style::kMiddle, u'=', BlockPlace::Anywhere, true},
    {block::kUserBeginFirst, block_style::kBegin, u'[', BlockPlace::StatementStart, true},
    {block::kUserBeginLast, block_style::kBegin, u']', BlockPlace::LineEnd, true},
};

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
inline constexpr int32_t kMiddleBlocks = BlocksOfStyle(block_style::kMiddle);
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
