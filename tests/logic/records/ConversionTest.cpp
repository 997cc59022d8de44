// What a server of the family answers for these codes.

#include "records/Conversion.h"
#include "base/Error.h"

#include <gtest/gtest.h>

namespace nib::test {

struct Answer {
    const char* code;
    const char* from;
    const char* to;
};

Conversion Of(const char* code)
{
    return Conversion(FromUtf8(code));
}

constexpr Answer kShown[] = {
    {"D", "0", "31 DEC 1967"},
    {"D", "-365", "31 DEC 1966"},
    {"D", "50000", "22 NOV 2104"},
    {"D2", "12345", "18 OCT 01"},
    {"D2/", "21137", "11/13/25"},
    {"D4/", "-1", "12/30/1967"},
    {"D4-", "21137", "11-13-2025"},
    {"D4-", "", ""},
    {"D4.", "1", "01.01.1968"},
    {"D4:", "0", "12:31:1967"},
    {"D4DMY", "21137", "13 11 2025"},
    {"DYMD", "0", "1967 12 31"},
    {"D4-YMD", "21137", "2025-11-13"},
    {"D4,YMD", "21137", "2025,11,13"},
    {"D-YMD[4,2,2]", "12345", "2001-10-18"},
    {"D/E", "21137", "13/11/2025"},
    {"D2/E", "50000", "22/11/04"},
    {"D4E", "21137", "13 NOV 2025"},
    {"DL", "21137", "13 Nov 2025"},
    {"DY", "21137", "2025"},
    {"DM", "1", "01"},
    {"DD", "-1", "30"},
    {"DQ", "1", "1"},
    {"DJ", "21137", "317"},
    {"DJ", "1", "01"},
    {"DW", "0", "7"},
    {"DWA", "21137", "THURSDAY"},
    {"DMA", "12345", "OCTOBER"},
    {"D4-YJ", "12345", "2001-291"},
    {"D4-MD", "21137", "11-13"},
    {"DMY", "21137", "11 2025"},
    {"D3", "21137", "13 NOV 025"},
    {"MD0", "12.5", "13"},
    {"MD2", "125000", "1250.00"},
    {"MD2", "5", "0.05"},
    {"MD2", "12.5", "0.13"},
    {"MD2,", "1234567", "12,345.67"},
    {"MD2$", "-4250", "-$42.50"},
    {"MD2,$", "125000", "$1,250.00"},
    {"MD2-", "-4250", "42.50-"},
    {"MD2-", "5", "0.05 "},
    {"MD2<", "-4250", "<42.50>"},
    {"MD2<", "5", " 0.05 "},
    {"MD2C", "-4250", "42.50cr"},
    {"MD2D", "-4250", "42.50db"},
    {"MD2D", "5", "0.05  "},
    {"MD24", "-4250", "-0.43"},
    {"MD24", "1234567", "123.46"},
    {"MD4", "5", "0.0005"},
    {"MD2Z", "0", ""},
    {"MD2P", "12.5", "12.50"},
    {"MD2P", "125000", "1250.00"},
    {"MD20", "12.5", "12.50"},
    {"MD02", "-4250", "-43"},
    {"MD9", "12.5", "0.000000013"},
    {"MR42", "12.5", "0.1250"},
    {"MR10", "-4250", "-4250.0"},
    {"MR2#10", "5", "      0.05"},
    {"ML2#10", "-4250", "-42.50    "},
    {"MR2%10", "1234567", "0012345.67"},
    {"MR2,$*14", "125000", "*****$1,250.00"},
    {"MT", "3661", "01:01"},
    {"MT", "100000", "27:46"},
    {"MTH", "0", "12:00am"},
    {"MTH", "43200", "12:00pm"},
    {"MTH", "46800", "01:00pm"},
    {"MTS", "86399", "23:59:59"},
    {"MTHS", "3661", "01:01:01am"},
    {"MTS.", "46800", "13.00.00"},
    {"MCU", "o'NEIL smith-jones", "O'NEIL SMITH-JONES"},
    {"MCL", "hello World 12", "hello world 12"},
    {"MCT", "o'NEIL smith-jones", "O'Neil Smith-Jones"},
    {"T3", "ABCDEFG", "EFG"},
    {"T2,3", "ABCDEFG", "BCD"},
    {"T2,3", "AB", "B"},
    {"G*1", "A*B*C", "A"},
    {"G1*1", "A*B*C", "B"},
    {"G1*1", "AB", ""},
    {"G*2", "A*B*C", "A*B"},
    {"G1-2", "A-B-C", "B-C"},
    {"L", "ABCDE", "5"},
    {"L3", "ABC", "ABC"},
    {"L2,4", "ABC", "ABC"},
    {"P(3N-2N)", "123-45", "123-45"},
    {"P(1A3N);(2N)", "12", "12"},
    {"P(0X)", "C1001", "C1001"},
    {"P(0A)", "ABC", "ABC"},
};

TEST(ConversionTest, ValuesAreShownAsTheServerShowsThem)
{
    for (const Answer& row : kShown) {
        SCOPED_TRACE(std::string(row.code) + " of " + row.from);
        const auto shown = Of(row.code).Show(FromUtf8(row.from));
        ASSERT_TRUE(shown);
        EXPECT_EQ(ToUtf8(*shown), row.to);
    }
}

constexpr Answer kStored[] = {
    {"D", "14 NOV 2025", "21138"},
    {"D", "14NOV2025", "21138"},
    {"D", "14-NOV-2025", "21138"},
    {"D4/", "11/14/2025", "21138"},
    {"D4/", "111425", "21138"},
    {"D4/", "11.14.2025", "21138"},
    {"D4/", "NOV 14, 2025", "21138"},
    {"D4/", "12/31/67", "0"},
    {"D4/", "1/1/30", "-13878"},
    {"D4/", "1/1/29", "22282"},
    {"D4/", "1/1/1900", "-24835"},
    {"D4/", "29 FEB 2024", "20514"},
    {"D4/E", "14/11/25", "21138"},
    {"D4/E", "141125", "21138"},
    {"D4-DMY", "14/11/2025", "21138"},
    {"D4-YMD", "2025-11-14", "21138"},
    {"D4-YMD", "20251114", "21138"},
    {"D4-YMD", "14/11/25", "17131"},
    {"MD2", "1250", "125000"},
    {"MD2,$", "$1,250.00", "125000"},
    {"MD2", "-12.5", "-1250"},
    {"MD2", "12.5-", "-1250"},
    {"MD2", "<12.50>", "-1250"},
    {"MD2", "(12.50)", "-1250"},
    {"MD2", "12.50CR", "-1250"},
    {"MD2", ".5", "50"},
    {"MD2", "5.", "500"},
    {"MD2", "+5", "500"},
    {"MD2", " 12.50 ", "1250"},
    {"MD0", "1,250.00", "1250"},
    {"MD2", "99999999999999.99", "9999999999999999"},
    {"MD24", "12.345", "123450"},
    {"MD2", "", ""},
    {"MT", "13:45", "49500"},
    {"MTH", "1:45pm", "49500"},
    {"MT", "13:45:30", "49530"},
    {"MT", "24:00", "86400"},
    {"MT", "13", "46800"},
    {"MT", "13.45", "49500"},
    {"MTH", "12:00pm", "43200"},
    {"MTS", "1:2:3", "3723"},
    {"MCU", "a*b*c", "A*B*C"},
    {"MCT", "ABCDE", "Abcde"},
    {"L2,4", "A123", "A123"},
    {"P(1A3N)", "A123", "A123"},
};

TEST(ConversionTest, TypedTextsAreStoredAsTheServerStoresThem)
{
    for (const Answer& row : kStored) {
        SCOPED_TRACE(std::string(row.code) + " of " + row.from);
        EXPECT_EQ(ToUtf8(Of(row.code).Store(FromUtf8(row.from), {})), row.to);
    }
}

TEST(ConversionTest, WhatMeansNothingIsRefused)
{
    constexpr Answer kRefused[] = {{"D4/", "14/11/2025", "'14/11/2025' is no date such as 11/13/2025."},
                                   {"D4/", "ABC", ""},
                                   {"D4/", "0", ""},
                                   {"D4/E", "31/4/2025", ""},
                                   {"D", "29 FEB 2023", ""},
                                   {"D", "14 NOV", ""},
                                   {"D4-YMD", "14 NOV 2025 1", ""},
                                   {"MD2", "ABC", "'ABC' is no number."},
                                   {"MD2", "1,2", ""},
                                   {"MD2", "12,34.5", ""},
                                   {"MD2", "1.2.3", ""},
                                   {"MD2", "-", ""},
                                   {"MD2", "12.345", "'12.345' has more than 2 decimal places."},
                                   {"MTH", "13:60", "'13:60' is no time such as 01:45pm."},
                                   {"MT", "13:45PM", ""},
                                   {"MT", "", nullptr},
                                   {"L3", "ABCDE", "'ABCDE' is not of the form L3."},
                                   {"P(3N)", "A12", ""},
                                   {"T3", "ABCDE", ""}};
    for (const Answer& row : kRefused) {
        SCOPED_TRACE(std::string(row.code) + " of " + row.from);
        try {
            const Text stored = Of(row.code).Store(FromUtf8(row.from), {});
            EXPECT_EQ(row.to, nullptr) << ToUtf8(stored);
        } catch (const Error& error) {
            ASSERT_NE(row.to, nullptr);
            if (*row.to) {
                EXPECT_STREQ(error.what(), row.to);
            }
        }
    }
    EXPECT_THROW(Of("G*1").Store(u"X", u"A*B"), Error) << "the rest would be lost";
    EXPECT_EQ(Of("G*1").Store(u"X", u"A"), u"X");
}

TEST(ConversionTest, ValuesThatACodeIsNotMeantForStayAsTheyAre)
{
    constexpr Answer kOdd[] = {{"D4-", "ABC", ""},  {"D4-", "99999999999999999999", ""},
                               {"MD2", "12a", ""},  {"MT", "-60", ""},
                               {"L3", "ABCDE", ""}, {"P(1N)", "123", ""}};
    EXPECT_FALSE(Of("P(0X99999X0X99999X)").Show(Text(100'000, u'x'))) << "nor does it take its time";
    for (const Answer& row : kOdd) EXPECT_FALSE(Of(row.code).Show(FromUtf8(row.from))) << row.code;
    for (const char* code : {"XYZ", "D4-Q!", "DI", "DY4", "MX9", "MD2($#12)", "G", "L,3", "P", "TX", "D4 MDY[,A]",
                             "TDATA;X;1;1", "MD2#999999999999", "D[", "P(", "G99999999999*1"})
        EXPECT_FALSE(Of(code).IsKnown()) << code;
}

} // namespace nib::test
