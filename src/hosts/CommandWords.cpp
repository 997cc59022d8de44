#include "hosts/CommandWords.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kBlanks{u" \t"};
constexpr TextView kQuotes{u"\"'"};

} // namespace

std::vector<Text> SplitCommand(TextView command)
{
    std::vector<Text> words;
    for (;;) {
        const size_t start = command.find_first_not_of(kBlanks);
        if (start == TextView::npos) return words;
        command.remove_prefix(start);
        const bool quoted = kQuotes.find(command.front()) != TextView::npos;
        const size_t close = quoted ? command.find(command.front(), 1) : TextView::npos;
        size_t end = close == TextView::npos ? 0 : close + 1;
        Text word(close == TextView::npos ? TextView() : command.substr(1, close - 1));
        const size_t blank = std::min(command.find_first_of(kBlanks, end), command.size());
        word += command.substr(end, blank - end);
        words.push_back(std::move(word));
        command.remove_prefix(blank);
    }
}

std::vector<Text> SplitProgramLine(TextView line)
{
    std::vector<Text> words;
    Text word;
    bool inWord = false;
    char16_t quote = 0;
    for (size_t i = 0; i < line.size(); ++i) {
        const char16_t c = line[i];
        if (c == u'\\' && quote != u'\'' && i + 1 < line.size()) {
            word.push_back(line[++i]);
            inWord = true;
        } else if (quote != 0 && c == quote) {
            quote = 0;
        } else if (quote == 0 && kQuotes.find(c) != TextView::npos) {
            quote = c;
            inWord = true;
        } else if (quote == 0 && kBlanks.find(c) != TextView::npos) {
            if (inWord) words.push_back(std::move(word));
            word.clear();
            inWord = false;
        } else {
            word.push_back(c);
            inWord = true;
        }
    }
    if (inWord) words.push_back(std::move(word));
    return words;
}

} // namespace nib
