#pragma once
#include "base/Text.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace nib {

/// A database file. Calls throw Error: kLocked when another program keeps it to itself for too long.
class Database {
public:
    /// Makes it when it is missing, for the user alone. One without a name lives as long as this.
    explicit Database(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Run(const char* statements);
    sqlite3* Handle() const { return handle_; }

private:
    sqlite3* handle_ = nullptr;
};

/// One statement, prepared once and run as often as one likes.
class Statement {
public:
    Statement(Database& database, const char* text);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Begins anew with these in place of its question marks. Bytes must live until the next one.
    template <typename... Values>
    Statement& With(const Values&... values)
    {
        Reset();
        int at = 0;
        (Bind(++at, values), ...);
        return *this;
    }
    /// The next row; false, and ready to begin anew, when there is none.
    bool Step();
    /// To its end.
    void Run()
    {
        while (Step()) continue;
    }
    std::string_view Bytes(int column) const; ///< until the next step
    Text Name(int column) const;
    int64_t Number(int column) const;
    /// Lets go of what it holds of the database.
    void Reset();

private:
    void Bind(int at, std::string_view bytes);
    void Bind(int at, const Text& name);
    void Bind(int at, int64_t number);
    void Bind(int at, int32_t number) { Bind(at, int64_t{number}); }

    Database& database_;
    sqlite3_stmt* handle_ = nullptr;
};

/// Either all that it sees is written or nothing.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(database) { database_.Run("BEGIN IMMEDIATE"); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    Database& database_;
    bool open_ = true;
};

} // namespace nib
