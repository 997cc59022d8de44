#pragma once
#include "platform/MessageBoxes.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

namespace nib::test {

struct ShownBox {
    Text text;
    int32_t flags = 0; ///< without kExtended, which every box carries
    Text title = u"Nib";

    friend bool operator==(const ShownBox&, const ShownBox&) = default;
    friend void PrintTo(const ShownBox& box, std::ostream* out)
    {
        *out << ToUtf8(box.title) << ": " << ToUtf8(box.text) << " (" << box.flags << ")";
    }
};

inline ShownBox Question(Text text, int32_t buttons = message_box::kYesNo)
{
    return {std::move(text), buttons | message_box::kQuestion};
}
inline ShownBox Warning(Text text)
{
    return {std::move(text), message_box::kWarning};
}

/// Answers from a script. A question that nobody scripted fails the test, and so does a box that nobody looked at.
struct FakeMessageBoxes : MessageBoxes {
    ~FakeMessageBoxes() override
    {
        EXPECT_EQ(Take(), std::vector<ShownBox>{}) << "shown, and no test asked";
        EXPECT_TRUE(answers_.empty()) << "answers that no question used";
    }
    int32_t Show(TextView text, int32_t flags, TextView title) override
    {
        EXPECT_TRUE(flags & message_box::kExtended);
        flags &= ~message_box::kExtended;
        shown_.push_back({Text(text), flags, Text(title)});
        if (whileShown) whileShown();
        if ((flags & 0xF) == message_box::kOk) return message_box::kAnswerOk;
        if (answers_.empty()) {
            ADD_FAILURE() << "nobody answers: " << ToUtf8(text);
            return message_box::kAnswerCancel;
        }
        int32_t answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    void Beep() override { ++beeps; }
    void Answer(std::initializer_list<int32_t> answers) { answers_.insert(answers_.end(), answers); }
    std::vector<ShownBox> Take() { return std::exchange(shown_, {}); }

    std::function<void()> whileShown;
    int32_t beeps = 0;

private:
    std::deque<int32_t> answers_;
    std::vector<ShownBox> shown_;
};

} // namespace nib::test
