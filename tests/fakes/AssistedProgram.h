#pragma once
// A program on fakes that knows its programs: the language service runs on its thread, what it answers arrives when the
// test waits for it.

#include "fakes/TestProgram.h"
#include "language/Dialects.h"

#include <chrono>
#include <mutex>
#include <thread>

namespace nib::test {

/// Calls from another thread, until they are taken.
struct CallQueue {
    std::mutex mutex;
    std::vector<std::function<void()>> calls;

    void Add(std::function<void()> call)
    {
        const std::lock_guard lock(mutex);
        calls.push_back(std::move(call));
    }
    void Take()
    {
        std::vector<std::function<void()>> taken;
        {
            const std::lock_guard lock(mutex);
            taken.swap(calls);
        }
        for (auto& call : taken) call();
    }
};

struct AssistedProgram : Surroundings {
    using Surroundings::Surroundings;

    Dialects dialects;
    std::shared_ptr<CallQueue> queue = std::make_shared<CallQueue>();
    FakeMainWindow window{journal};
    FakeViewFactory views{window, clipboard};
    Program program{With(Around(window, std::ref(views)))};
    Assistance& assist = program.Assist();

    ProgramPorts With(ProgramPorts ports)
    {
        const Dialect* common = dialects.Find(u"common");
        ports.assist = {[common] {
                            return std::make_unique<LanguageService>(ServiceOptions{common, {}});
                        },
                        [calls = queue](std::function<void()> call) { calls->Add(std::move(call)); }};
        ports.dialects = &dialects;
        return ports;
    }
    /// A document of this path and text, which is followed.
    std::shared_ptr<mvDocument> Open(const Text& path, Text text)
    {
        connection.store.items[path] = {std::move(text), false};
        auto document = NewDocumentObject(program.Services());
        EXPECT_TRUE(document->FileOpen(path, false)) << ToUtf8(path);
        assist.Follow(*document, document->View()->txtText().Document());
        return document;
    }
    SourceView& View(mvDocument& document) { return document.View()->txtText(); }
    /// Lets turns of the loop go by until it is so; false when it never is.
    template <typename Condition>
    bool Wait(Condition&& so)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!so()) {
            if (std::chrono::steady_clock::now() > end) return false;
            clock.Advance(std::chrono::milliseconds(1));
            queue->Take();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    const std::vector<ProgramFinding>& FindingsOf(const std::shared_ptr<mvDocument>& document)
    {
        return assist.Findings(document->DocumentID());
    }
};

} // namespace nib::test
