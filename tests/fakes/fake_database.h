// A scripted, recording stand-in for the database, with ADO's states and errors.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "automation/value.h"
#include "platform/database.h"

namespace fakes {

// The answer to a query: {{u"ID", u"Navn"}, {{1, u"Öberg"}, {2, u"Ek"}}}.
struct Rows {
  std::vector<std::u16string> columns;
  std::vector<std::vector<automation::Value>> rows;
};

inline constexpr const char16_t* kIdentityStatement = u"Select @@Identity";

// The errors that ADO and its providers raise themselves.
inline automation::AutomationError AdoError(std::int32_t number) {
  static const std::map<std::int32_t, std::u16string> texts = {
      {3021,
       u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
       u"requires a current record."},
      {3265,
       u"Item cannot be found in the collection corresponding to the requested name or ordinal."},
      {3704, u"Operation is not allowed when the object is closed."},
      {3705, u"Operation is not allowed when the object is open."},
      {3709,
       u"The connection cannot be used to perform this operation. It is either closed or invalid "
       u"in "
       u"this context."},
      {-2147217908, u"Command text was not set for the command object."},
      {-2147217900, u"Syntax error in the statement."},
      {-2147168242, u"No transaction is active."},
      {-2147168237, u"Only one transaction can be active on this session."}};
  return {number, u"ADODB", texts.at(number)};
}

// Whether a statement lacks a value, as in "VALUES (1,,2)" or "ID = ", which every database
// refuses. Quoted text is ignored.
inline bool LeavesValueOut(std::u16string_view statement) {
  std::u16string outsideQuotes;
  bool quoted = false;
  for (const char16_t unit : statement) {
    quoted = quoted != (unit == u'\'');
    if (!quoted) {
      outsideQuotes += unit;
    }
  }
  static constexpr std::array<std::u16string_view, 6> gaps = {u",,",  u", ,", u",)",
                                                              u", )", u"= ,", u"=  "};
  return outsideQuotes.ends_with(u"= ") ||
         std::any_of(std::begin(gaps), std::end(gaps), [&](std::u16string_view gap) {
           return outsideQuotes.find(gap) != std::u16string::npos;
         });
}

// The script, log and states that the connections and recordsets of one Database share. They keep
// it alive, because the component's shared state outlives a test.
class DatabaseScript {
 public:
  // Logs the call, then raises the failure scripted for it.
  void Enter(std::u16string call, std::u16string_view statement = {}) {
    log.push_back(std::move(call));
    if (callsUntilFailure && --*callsUntilFailure == 0) {
      callsUntilFailure.reset();
      throw automation::AutomationError(*callFailure);
    }
    const auto failing =
        std::find_if(statementFailures.begin(), statementFailures.end(), [&](const auto& failure) {
          return !statement.empty() && statement.starts_with(failure.first);
        });
    if (failing != statementFailures.end()) {
      throw automation::AutomationError(failing->second);
    }
  }

  // The next answer scripted for the statement; the last one is repeated. An empty statement, or
  // one that lacks a value, raises the provider's error.
  std::optional<Rows> Take(const std::u16string& statement) {
    if (statement.empty()) {
      throw AdoError(-2147217908);
    }
    if (LeavesValueOut(statement)) {
      throw AdoError(-2147217900);
    }
    const auto found = answers.find(statement);
    if (found == answers.end()) {
      return std::nullopt;
    }
    Rows rows = found->second.front();
    if (found->second.size() > 1) {
      found->second.pop_front();
    }
    return rows;
  }

  // Like Enter, for calls that only read a recordset.
  void EnterRead(const std::u16string& call) {
    if (logsReads) {
      Enter(call);
    }
  }

  std::map<std::u16string, std::deque<Rows>> answers;
  std::optional<std::size_t> callsUntilFailure;
  std::optional<automation::AutomationError> callFailure;
  std::vector<std::pair<std::u16string, automation::AutomationError>> statementFailures;
  std::optional<automation::AutomationError> rowsFailure;
  std::vector<std::u16string> log;
  bool logsReads = false;
  int aliveConnections = 0;
  int openConnections = 0;
  int openTransactions = 0;
  int aliveRecordsets = 0;
};

class Connection;

class Recordset : public platform::Recordset {
 public:
  explicit Recordset(std::shared_ptr<DatabaseScript> script) : script_(std::move(script)) {
    ++script_->aliveRecordsets;
  }
  // Opens on these rows, as Execute and Clone return recordsets.
  Recordset(std::shared_ptr<DatabaseScript> script, std::shared_ptr<Rows> rows)
      : Recordset(std::move(script)) {
    rows_ = std::move(rows);
  }
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;
  ~Recordset() override { --script_->aliveRecordsets; }

  void SetCursorLocation(platform::CursorLocation location) override {
    script_->Enter(u"Recordset.CursorLocation = " +
                   automation::Decimal10(static_cast<std::int32_t>(location)));
    if (rows_) {
      throw AdoError(3705);
    }
    location_ = location;
  }
  inline void Open(const std::u16string& statement, platform::Connection& connection,
                   platform::CursorType cursorType, platform::LockType lockType,
                   std::int32_t options) override;
  bool Eof() override {
    script_->EnterRead(u"Recordset.EOF");
    RequireOpen();
    return AtEnd();
  }
  void MoveNext() override {
    script_->EnterRead(u"Recordset.MoveNext");
    RequireRow();
    ++position_;
  }
  automation::Value Field(const std::u16string& name) override {
    script_->EnterRead(u"Recordset.Field " + name);
    return Cell(IndexOf(name));
  }
  automation::Value Field(std::int32_t index) override {
    script_->EnterRead(u"Recordset.Field " + automation::Decimal10(index));
    RequireOpen();
    if (index < 0 || static_cast<std::size_t>(index) >= rows_->columns.size()) {
      throw AdoError(3265);
    }
    return Cell(static_cast<std::size_t>(index));
  }
  std::vector<automation::Value> GetRows(std::span<const std::u16string_view> names) override {
    script_->EnterRead(u"Recordset.GetRows");
    std::vector<std::size_t> columns;
    for (const auto name : names) {
      columns.push_back(IndexOf(std::u16string(name)));
    }
    RequireRow();
    if (script_->rowsFailure) {
      position_ = rows_->rows.size();
      throw automation::AutomationError(*script_->rowsFailure);
    }
    std::vector<automation::Value> values;
    for (; !AtEnd(); ++position_) {
      for (const std::size_t column : columns) {
        values.push_back(Cell(column));
      }
    }
    return values;
  }
  void SetField(const std::u16string& name, const automation::Value& value) override {
    script_->EnterRead(u"Recordset.SetField " + name);
    Cell(IndexOf(name)) = value;
  }
  std::unique_ptr<platform::Recordset> Clone(platform::LockType lockType) override {
    script_->Enter(u"Recordset.Clone " +
                   automation::Decimal10(static_cast<std::int32_t>(lockType)));
    RequireOpen();
    return std::make_unique<Recordset>(script_, rows_);
  }
  void Close() override {
    script_->Enter(u"Recordset.Close");
    RequireOpen();
    rows_.reset();
  }

 private:
  void RequireOpen() const {
    if (!rows_) {
      throw AdoError(3704);
    }
  }
  bool AtEnd() const { return position_ >= rows_->rows.size(); }
  void RequireRow() const {
    RequireOpen();
    if (AtEnd()) {
      throw AdoError(3021);
    }
  }
  std::size_t IndexOf(const std::u16string& name) const {
    RequireOpen();
    if (rows_->columns.empty()) {
      throw AdoError(3021);  // a query that is not scripted has its columns, but no rows
    }
    const auto found =
        std::find_if(rows_->columns.begin(), rows_->columns.end(),
                     [&](const auto& column) { return automation::EqualsNoCase(column, name); });
    if (found == rows_->columns.end()) {
      throw AdoError(3265);
    }
    return static_cast<std::size_t>(found - rows_->columns.begin());
  }
  automation::Value& Cell(std::size_t column) {
    RequireRow();
    return rows_->rows[position_].at(column);
  }

  std::shared_ptr<DatabaseScript> script_;
  platform::CursorLocation location_ = platform::CursorLocation::Server;
  // Shared with the clones, as in ADO; null while closed.
  std::shared_ptr<Rows> rows_;
  std::size_t position_ = 0;
};

class Connection : public platform::Connection {
 public:
  explicit Connection(std::shared_ptr<DatabaseScript> script) : script_(std::move(script)) {
    ++script_->aliveConnections;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() override {
    EndTransaction();
    script_->openConnections -= open_ ? 1 : 0;
    --script_->aliveConnections;
  }

  void SetConnectionString(const std::u16string& connectionString) override {
    script_->Enter(u"Connection.ConnectionString = " + connectionString);
    RequireClosed();
  }
  void Open(const std::u16string& connectionString, const std::u16string& user,
            const std::u16string& password, std::int32_t options) override {
    script_->Enter(u"Connection.Open '" + connectionString + u"', '" + user + u"', '" + password +
                   u"', " + automation::Decimal10(options));
    RequireClosed();
    open_ = true;
    ++script_->openConnections;
  }
  std::unique_ptr<platform::Recordset> Execute(const std::u16string& statement,
                                               std::int32_t options) override {
    script_->Enter(u"Execute " + automation::Decimal10(options) + u": " + statement, statement);
    RequireOpen(3704);
    auto rows = script_->Take(statement);
    if (!rows && automation::EqualsNoCase(automation::Left(statement, 6), u"select")) {
      rows.emplace();
    }
    return rows ? std::make_unique<Recordset>(script_, std::make_shared<Rows>(*std::move(rows)))
                : std::make_unique<Recordset>(script_);
  }
  void BeginTrans() override {
    script_->Enter(u"BeginTrans");
    RequireOpen(3704);
    if (inTransaction_) {
      throw AdoError(-2147168237);
    }
    inTransaction_ = true;
    ++script_->openTransactions;
  }
  void CommitTrans() override {
    script_->Enter(u"CommitTrans");
    RequireTransaction();
    EndTransaction();
  }
  void RollbackTrans() override {
    script_->Enter(u"RollbackTrans");
    RequireTransaction();
    EndTransaction();
  }
  void RequireOpen(std::int32_t error) const {
    if (!open_) {
      throw AdoError(error);
    }
  }

 private:
  void RequireClosed() const {
    if (open_) {
      throw AdoError(3705);
    }
  }
  void RequireTransaction() const {
    RequireOpen(3704);
    if (!inTransaction_) {
      throw AdoError(-2147168242);
    }
  }
  void EndTransaction() {
    script_->openTransactions -= inTransaction_ ? 1 : 0;
    inTransaction_ = false;
  }

  std::shared_ptr<DatabaseScript> script_;
  bool open_ = false;
  bool inTransaction_ = false;
};

inline void Recordset::Open(const std::u16string& statement, platform::Connection& connection,
                            platform::CursorType cursorType, platform::LockType lockType,
                            std::int32_t options) {
  using automation::Decimal10;
  script_->Enter(u"Recordset.Open type " + Decimal10(static_cast<std::int32_t>(cursorType)) +
                     u", lock " + Decimal10(static_cast<std::int32_t>(lockType)) + u", options " +
                     Decimal10(options) + u", cursor " +
                     Decimal10(static_cast<std::int32_t>(location_)) + u": " + statement,
                 statement);
  if (rows_) {
    throw AdoError(3705);
  }
  dynamic_cast<Connection&>(connection).RequireOpen(3709);
  rows_ = std::make_shared<Rows>(script_->Take(statement).value_or(Rows()));
  position_ = 0;
}

// Answers statements with the rows scripted for them (none by default) and records every call to
// all its connections and recordsets, in order, in one log:
//   Connection.ConnectionString = Driver=…
//   Connection.Open '', '', '', -1
//   Execute -1: Delete from Journal where id = 0
//   BeginTrans, CommitTrans, RollbackTrans
//   Recordset.CursorLocation = 3
//   Recordset.Open type 3, lock 4, options -1, cursor 3: SELECT …
//   Recordset.Clone -1, Recordset.Close
// Field names are found without regard to case. A statement that leaves a value out is refused.
class Database : public platform::Database {
 public:
  std::unique_ptr<platform::Connection> NewConnection() override {
    RequireInstalled();
    return std::make_unique<Connection>(script_);
  }
  std::unique_ptr<platform::Recordset> NewRecordset() override {
    RequireInstalled();
    return std::make_unique<Recordset>(script_);
  }

  // Sets the rows of exactly this statement.
  void Answer(const std::u16string& statement, Rows rows) {
    script_->answers[statement] = {std::move(rows)};
  }
  // Different rows each time; the last ones are repeated.
  void AnswerInTurn(const std::u16string& statement, std::deque<Rows> rows) {
    script_->answers[statement] = std::move(rows);
  }
  // The values of "Select @@Identity", in order.
  void AnswerIdentities(const std::vector<automation::Value>& keys) {
    auto& answers = script_->answers[kIdentityStatement];
    answers.clear();
    for (const auto& key : keys) {
      answers.push_back({{u""}, {{key}}});
    }
  }
  // The n-th logged call from now (1 is the next) raises `error` instead of being carried out.
  void FailCall(std::size_t n, automation::AutomationError error) {
    script_->callsUntilFailure = n;
    script_->callFailure = std::move(error);
  }
  // Every statement that starts with `start` raises `error`, whether executed or opened.
  void FailStatement(const std::u16string& start, automation::AutomationError error) {
    script_->statementFailures.emplace_back(start, std::move(error));
  }
  // Every call for whole rows raises `error` and leaves the cursor at the end.
  void FailRows(automation::AutomationError error) { script_->rowsFailure = std::move(error); }
  void ClearFailures() {
    script_->callsUntilFailure.reset();
    script_->rowsFailure.reset();
    script_->statementFailures.clear();
  }
  // Whether the call set with FailCall is still to come.
  bool FailureIsPending() const { return script_->callsUntilFailure.has_value(); }
  void ClearLog() { script_->log.clear(); }
  // Whether calls that only read a recordset (EOF, MoveNext, a field, rows) are logged too, and so
  // counted by FailCall.
  void LogReads(bool logsReads) { script_->logsReads = logsReads; }

  const std::vector<std::u16string>& Log() const { return script_->log; }
  // The log's entries that begin with `start`, for example u"Execute".
  std::vector<std::u16string> LogOf(std::u16string_view start) const {
    std::vector<std::u16string> entries;
    std::copy_if(script_->log.begin(), script_->log.end(), std::back_inserter(entries),
                 [&](const auto& entry) { return entry.starts_with(start); });
    return entries;
  }
  bool InTransaction() const { return script_->openTransactions > 0; }
  int AliveConnections() const { return script_->aliveConnections; }
  int OpenConnections() const { return script_->openConnections; }
  int AliveRecordsets() const { return script_->aliveRecordsets; }

  // False: creating an object raises 429, as on a machine without the database interface.
  bool installed = true;

 private:
  void RequireInstalled() const {
    if (!installed) {
      throw automation::AutomationError(automation::RuntimeError::CannotCreateObject);
    }
  }

  std::shared_ptr<DatabaseScript> script_ = std::make_shared<DatabaseScript>();
};

}  // namespace fakes
