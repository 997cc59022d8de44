#pragma once
// Generated program text, the same at every run.

#include "base/Text.h"

#include <string>

namespace nib::bench {

/// About 37 bytes a line, LF ends, in the manner of MultiValue BASIC.
inline std::string BasicBytes(int32_t lines)
{
    static constexpr const char* kLines[] = {
        "      * read the customer of this order\n",
        "      READ CUST.REC FROM F.CUST, ORDER.REC<3> ELSE\n",
        "         CRT 'Customer ':ORDER.REC<3>:' not found'\n",
        "         GOSUB 9000\n",
        "      END\n",
        "      FOR LINE.NO = 1 TO DCOUNT(ORDER.REC<7>, @VM)\n",
        "         QTY = ORDER.REC<8, LINE.NO> ; PRICE = ORDER.REC<9, LINE.NO>\n",
        "         TOTAL += QTY * PRICE\n",
        "      NEXT LINE.NO\n",
        "1000: IF TOTAL > LIMIT THEN GOTO 2000\n",
        "      BEGIN CASE\n",
        "         CASE STATUS = 'A' ; CRT \"open\"\n",
        "         CASE 1 ; CRT \"closed\"\n",
        "      END CASE\n",
    };
    std::string text;
    text.reserve(static_cast<size_t>(lines) * 40);
    for (int32_t i = 0; i < lines; ++i) text += kLines[static_cast<size_t>(i * 5 + i / 14) % std::size(kLines)];
    return text;
}

} // namespace nib::bench
