#include "database/engine/embedded/row_reader.h"

#include <utility>

namespace engine::embedded {
namespace {

constexpr std::size_t rows_read_at_once = 200;

}  // namespace

RowReader::RowReader(std::shared_ptr<Session> session, std::string_view sqlite_sql, std::vector<DataType> types,
                     std::int64_t table)
    : session_(std::move(session)), table_(table), rows_(std::move(types)) {
  statement_.emplace(session_->connection().statement(sqlite_sql));
  session_->add_reader(*this);
  while (statement_ && rows_.size() < rows_read_at_once && read_row()) {
  }
  if (failure_ && rows_.size() == 0) throw *failure_;
  if (table_ != 0) session_->add_row_holder(*this);
}

RowReader::~RowReader() {
  session_->remove_reader(*this);
  session_->remove_row_holder(*this);
}

bool RowReader::reach(std::size_t row) {
  while (rows_.size() <= row) {
    if (statement_ && read_row()) continue;
    if (failure_) throw *failure_;
    return false;
  }
  return true;
}

void RowReader::read_to_end() {
  finish();
  if (failure_) throw *failure_;
}

void RowReader::finish() noexcept {
  while (statement_ && read_row()) {
  }
}

void RowReader::abandon() noexcept { statement_.reset(); }

void RowReader::lose_rows_after(std::int64_t table, std::int64_t last_row) noexcept {
  if (table == table_) rows_.lose_identities_after(last_row);
}

void RowReader::close() noexcept {
  let_go();
  failure_.reset();
  rows_.clear();
}

void RowReader::let_go() noexcept {
  session_->remove_reader(*this);
  statement_.reset();
}

bool RowReader::read_row() noexcept {
  PreparedStatement& statement = **statement_;
  bool found = false;
  try {
    found = statement.step();
    if (found) rows_.append(statement, table_ != 0);
  } catch (const support::RuntimeError& error) {
    failure_ = error;
  }
  if (!found) let_go();
  return found;
}

}  // namespace engine::embedded
