#include "database/engine/embedded/row_reader.h"

#include <utility>

namespace engine::embedded {
namespace {

constexpr std::size_t rows_read_at_once = 200;

}  // namespace

RowReader::RowReader(std::shared_ptr<Session> session, std::string_view sqlite_sql, std::vector<DataType> types,
                     bool has_row_id)
    : session_(std::move(session)), has_row_id_(has_row_id), rows_(std::move(types)) {
  statement_.emplace(session_->connection().statement(sqlite_sql));
  session_->add_reader(*this);
  reach(rows_read_at_once - 1);
}

RowReader::~RowReader() { session_->remove_reader(*this); }

bool RowReader::reach(std::size_t row) {
  while (rows_.size() <= row) {
    if (!statement_ || !read_row()) return false;
  }
  return true;
}

void RowReader::read_to_end() {
  while (statement_ && read_row()) {
  }
}

void RowReader::abandon() noexcept { statement_.reset(); }

void RowReader::let_go() noexcept {
  session_->remove_reader(*this);
  statement_.reset();
}

bool RowReader::read_row() {
  Statement& statement = **statement_;
  bool found = false;
  try {
    found = statement.step();
  } catch (const support::RuntimeError&) {
    let_go();
    throw;
  }
  if (!found) {
    let_go();
    return false;
  }
  rows_.append(statement, has_row_id_);
  return true;
}

}  // namespace engine::embedded
