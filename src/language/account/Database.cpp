#include "language/account/Database.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <sqlite3.h>

#include <fcntl.h>

namespace nib {

namespace {

/// Another editor writes no longer than this at a time.
constexpr int kPatience = 5000; // milliseconds

Error FailureIn(sqlite3* handle)
{
    const int kind = sqlite3_errcode(handle) & 0xFF;
    const bool busy = kind == SQLITE_BUSY || kind == SQLITE_LOCKED;
    return {busy ? error_number::kLocked : error_number::kStorage,
            u"The database: " + FromUtf8(sqlite3_errmsg(handle)) + u"."};
}

[[noreturn]] void Fail(sqlite3* handle)
{
    throw Error(FailureIn(handle));
}

} // namespace

Database::Database(const std::string& path)
{
    // What the library makes beside a file gets the mode of that.
    if (!path.empty()) Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int result = sqlite3_open_v2(path.c_str(), &handle_, kFlags, nullptr);
    if (result == SQLITE_OK && sqlite3_busy_timeout(handle_, kPatience) == SQLITE_OK) return;
    const Error failure = FailureIn(handle_);
    sqlite3_close(handle_);
    throw Error(failure);
}

Database::~Database()
{
    sqlite3_close(handle_);
}

void Database::Run(const char* statements)
{
    if (sqlite3_exec(handle_, statements, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(handle_);
}

Statement::Statement(Database& database, const char* text) : database_(database)
{
    if (sqlite3_prepare_v3(database.Handle(), text, -1, SQLITE_PREPARE_PERSISTENT, &handle_, nullptr) != SQLITE_OK)
        Fail(database.Handle());
}

Statement::~Statement()
{
    sqlite3_finalize(handle_);
}

bool Statement::Step()
{
    const int result = sqlite3_step(handle_);
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) {
        const Error failure = FailureIn(database_.Handle());
        Reset();
        throw Error(failure);
    }
    Reset();
    return false;
}

void Statement::Reset()
{
    sqlite3_reset(handle_);
}

std::string_view Statement::Bytes(int column) const
{
    const void* bytes = sqlite3_column_blob(handle_, column);
    const auto size = static_cast<size_t>(sqlite3_column_bytes(handle_, column));
    return bytes ? std::string_view(static_cast<const char*>(bytes), size) : std::string_view();
}

/// Names of files and items may hold what is no character: they are kept as the bytes that they stand for.
Text Statement::Name(int column) const
{
    return FromFileName(Bytes(column));
}

int64_t Statement::Number(int column) const
{
    return sqlite3_column_int64(handle_, column);
}

void Statement::Bind(int at, std::string_view bytes)
{
    // A null pointer would be no value at all.
    const char* data = bytes.empty() ? "" : bytes.data();
    if (sqlite3_bind_blob64(handle_, at, data, bytes.size(), SQLITE_STATIC) != SQLITE_OK) Fail(database_.Handle());
}

void Statement::Bind(int at, const Text& name)
{
    const std::string bytes = ToFileName(name);
    if (sqlite3_bind_blob64(handle_, at, bytes.data(), bytes.size(), SQLITE_TRANSIENT) != SQLITE_OK)
        Fail(database_.Handle());
}

void Statement::Bind(int at, int64_t number)
{
    if (sqlite3_bind_int64(handle_, at, number) != SQLITE_OK) Fail(database_.Handle());
}

Transaction::~Transaction()
{
    if (open_) sqlite3_exec(database_.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit()
{
    database_.Run("COMMIT");
    open_ = false;
}

} // namespace nib
