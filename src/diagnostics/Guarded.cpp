#include "diagnostics/Guarded.h"

#include <new>

namespace nib {

Error CurrentError()
{
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {error_number::kOutOfMemory, u"Out of memory"};
    } catch (const std::exception& error) {
        return {error_number::kInvalidCall, FromUtf8(error.what())};
    } catch (...) {
        return {error_number::kInvalidCall, u"Unknown failure"};
    }
}

} // namespace nib
