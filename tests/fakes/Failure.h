#pragma once
#include "diagnostics/Guarded.h"

namespace nib::test {

/// How `body` fails; with the number 0 when it does not.
template <typename Body>
Error ErrorOf(Body&& body)
{
    return FailureOf(std::forward<Body>(body)).value_or(Error{0, u""});
}

} // namespace nib::test
