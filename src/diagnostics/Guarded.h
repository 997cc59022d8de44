#pragma once
// The one place that catches. Every door of the program (command, timer, call-back from outside) goes through it.

#include "diagnostics/DebugLog.h"

#include <optional>
#include <utility>

namespace nib {

/// The exception being handled, as an Error; call only inside a catch block.
Error CurrentError();

/// Runs `body`; a failure is logged as "<where>: error=0x..." and handed to `onError`, whose result is then the answer.
template <typename Body, typename OnError>
auto Guarded(const DebugLog& log, TextView where, Body&& body, OnError&& onError) -> decltype(body())
{
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        Error error = CurrentError();
        log.WriteError(where, error);
        return std::forward<OnError>(onError)(error);
    }
}

/// How `body` fails; nothing when it does not. For callers that log and answer in their own words.
template <typename Body>
std::optional<Error> FailureOf(Body&& body)
{
    try {
        std::forward<Body>(body)();
        return std::nullopt;
    } catch (...) {
        return CurrentError();
    }
}

/// The value of `body`, or `fallback` when it fails: for getters that answer a default whatever happens.
template <typename Body, typename Value>
Value OrDefault(Body&& body, Value fallback) noexcept
{
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return fallback;
    }
}

/// Runs each of the steps, whatever becomes of those before it, and forgets any failure.
template <typename... Steps>
void IgnoringErrors(Steps&&... steps) noexcept
{
    const auto run = [](auto& step) {
        try {
            step();
        } catch (...) {
        }
    };
    (run(steps), ...);
}

} // namespace nib
