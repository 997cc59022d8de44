// The lexer on a million lines, beside one pass over the same characters with one test and one table look-up each.

#include "BasicText.h"
#include "editing/LexClass.h"
#include "language/Dialects.h"
#include "text/SourceDocument.h"

#include <benchmark/benchmark.h>

#include <array>
#include <vector>

namespace nib::bench {
namespace {

constexpr int32_t kMillion = 1000000;

const std::vector<Text>& Lines()
{
    static const std::vector<Text> lines = Split(FromUtf8(BasicBytes(kMillion)), u'\n');
    return lines;
}

/// 500 words, half of them of two or three words; some begin like what the text holds.
const clsKeywords& UserKeywords()
{
    static const clsKeywords keywords = [] {
        static constexpr TextView kHeads[] = {u"READ",  u"CRT",   u"END",  u"CUST.REC", u"OPEN", u"MATREAD",
                                              u"WRITE", u"PRINT", u"FROM", u"DCOUNT",   u"FILE", u"SELECT"};
        Text list;
        for (int32_t i = 0; i < 500; ++i) {
            Text number = Decimal(i);
            list += kHeads[static_cast<size_t>(i) % std::size(kHeads)];
            list += i % 2 == 0 ? u"" : i % 4 == 1 ? u" INTO" : u" NEXT";
            list += i % 2 == 0 ? u"X" + number : i % 8 == 1 ? u" ALL" + number : number;
            list += u"\r\n";
        }
        clsKeywords made;
        made.SetKeywordList(keyword_class::kUser, u"\r\n", list);
        return made;
    }();
    return keywords;
}

const clsKeywords& InDialect()
{
    static Dialects dialects;
    static const clsKeywords keywords = [] {
        clsKeywords made;
        made.SetRules(dialects.Rules(u"common"));
        return made;
    }();
    return keywords;
}

void LexLimit(benchmark::State& state)
{
    std::array<uint8_t, 256> table{};
    for (size_t c = 0; c < table.size(); ++c) table[c] = static_cast<uint8_t>(c % 7);
    const auto& lines = Lines();
    for (auto _ : state) {
        uint64_t sum = 0;
        for (const Text& line : lines)
            for (char16_t c : line) sum += c < 0x100 ? table[c] : 1;
        benchmark::DoNotOptimize(sum);
    }
}

enum class Words { Default, User, Dialect };

void Use(LexClass& lexer, Words words)
{
    if (words != Words::Default) lexer.SetKeywords(words == Words::User ? UserKeywords() : InDialect());
}

void Lex(benchmark::State& state, Words words)
{
    SourceDocument document;
    document.SetText(FromUtf8(BasicBytes(kMillion)));
    LexClass lexer;
    Use(lexer, words);
    const auto& lines = Lines();
    int64_t tokens = 0;
    for (auto _ : state) {
        tokens = 0;
        for (int32_t line = 0; line < kMillion; ++line) {
            lexer.BeginLineScan(document, line, lines[static_cast<size_t>(line)], 0);
            Token token;
            do {
                static_cast<ISourceLex4&>(lexer).ScanToken(token);
                ++tokens;
            } while (token.type != token_type::kEndOfLine);
            lexer.EndLineScan(document);
        }
    }
    state.counters["tokens/line"] = static_cast<double>(tokens) / kMillion;
}

/// What a line costs more that is painted.
void Look(benchmark::State& state, Words words)
{
    SourceDocument document;
    document.SetText(FromUtf8(BasicBytes(kMillion)));
    LexClass lexer;
    Use(lexer, words);
    document.SetLexer(&lexer);
    document.EnsureScanned();
    const auto& lines = Lines();
    std::vector<Token> tokens;
    for (auto _ : state)
        for (int32_t line = 0; line < kMillion; ++line) {
            document.ScanLine(line, tokens);
            document.Look(lines[static_cast<size_t>(line)], tokens);
        }
    document.SetLexer(nullptr);
}

void LexInBuffer(benchmark::State& state, Words words)
{
    SourceDocument buffer;
    buffer.SetText(FromUtf8(BasicBytes(kMillion)));
    LexClass lexer;
    Use(lexer, words);
    for (auto _ : state) {
        buffer.SetLexer(&lexer);
        buffer.EnsureScanned();
    }
}

void LoadKeywords(benchmark::State& state)
{
    Text list;
    for (int32_t i = 0; i < kMillion; ++i) list += u"WORD." + Decimal(i) + u"\r\n";
    clsKeywords keywords;
    for (auto _ : state) {
        keywords.SetKeywordList(keyword_class::kUser, u"\r\n", list);
        benchmark::DoNotOptimize(keywords.CompoundKeywordSize());
    }
}

BENCHMARK(LexLimit)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lex, default_keywords, Words::Default)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lex, user_keywords_500, Words::User)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lex, common_dialect, Words::Dialect)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LexInBuffer, default_keywords, Words::Default)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LexInBuffer, common_dialect, Words::Dialect)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Look, default_keywords, Words::Default)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Look, common_dialect, Words::Dialect)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadKeywords)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
