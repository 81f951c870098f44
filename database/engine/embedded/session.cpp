#include "database/engine/embedded/session.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/file_copy.h"
#include "database/engine/embedded/platform_file.h"
#include "database/engine/embedded/session_scope.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

/// Returns the user version. If the key does not fit, nobody can tell a wrong key from damage: neither in the file
/// itself, nor in the journal of a process that died, which is read first.
std::int64_t read_for_the_first_time(Connection& file, const DatabaseFile& kind) {
  try {
    if (const std::optional<std::int64_t> version = file.first_read()) return *version;
  } catch (const support::RuntimeError& error) {
    if (!kind.encrypted || error.number() != error_number::unknown_format) throw;
  }
  raise(kind.encrypted && !kind.doubtful ? error_number::wrong_password : error_number::unknown_format);
}

}  // namespace

bool Session::is_too_long(std::string_view password) {
  constexpr std::size_t maximum_characters = 20;
  return support::character_count(password) > maximum_characters;
}

Session::Session(std::string host_path, std::string_view password, const ConnectionOptions& options)
    : host_path_(std::move(host_path)), password_(password), options_(options) {
  open_sessions().push_back(this);
}

std::vector<Session*>& Session::open_sessions() {
  static std::vector<Session*> sessions;
  return sessions;
}

std::shared_ptr<Session> Session::create(const std::string& host_path, const ConnectionOptions& options) {
  check_place_of_new_file(host_path);
  std::shared_ptr<Session> session{new Session(host_path, {}, options)};
  session->new_file_ = true;
  return session;
}

std::shared_ptr<Session> Session::open(const std::string& host_path, std::string_view password,
                                       const ConnectionOptions& options) {
  std::shared_ptr<Session> session{new Session(host_path, password, options)};
  try {
    session->connect_existing();
  } catch (const JetFileError&) {
    throw;
  } catch (const support::RuntimeError& error) {
    if (!password.empty() &&
        (error.number() == error_number::wrong_password || error.number() == error_number::unknown_format)) {
      session->refuse_fitting_password(error.number() == error_number::wrong_password);
    }
    throw;
  }
  return session;
}

Session::~Session() { close(); }

void Session::close() noexcept {
  if (!open_) return;
  std::erase(open_sessions(), this);
  disconnect();
  wipe_memory(password_.data(), password_.size());
  open_ = false;
}

void Session::require_open() const {
  if (!open_) raise(error_number::object_invalid);
}

void Session::connect_existing() {
  check_place_of_file(host_path_);
  connection_ = std::make_unique<Connection>(host_path_, options_);
  const DatabaseFile file =
      identify_database_file(connection_->beginning(telling_size), connection_->file_size(), has_journal(host_path_));
  // A password that is given for a file without one does not count.
  if (!file.encrypted) password_.clear();
  if (file.encrypted && password_.empty())
    raise(file.doubtful ? error_number::unknown_format : error_number::wrong_password);
  std::optional<FileKey> key;
  if (file.encrypted) connection_->use_key(key.emplace(password_, file.salt));
  const std::int64_t stamp = read_for_the_first_time(*connection_, file);
  if (key && is_too_long(password_))
    raise(error_number::unknown_format, "the file's password has more than 20 characters");
  if (key) key->remember(password_);
  if (options_.exclusive && !options_.read_only) {
    connection_->run("BEGIN EXCLUSIVE");
    connection_->run("COMMIT");
  }
  identity_ = host_path_ + std::string(file.salt.begin(), file.salt.end());
  catalogue_ = known_catalogues::find(identity_, stamp);
  catalogue_at_hand();
}

void Session::refuse_fitting_password(bool seemed_wrong) {
  Connection file{host_path_, options_};
  embedded::refuse_fitting_password(file.beginning(most_page_size), file.file_size(), password_, seemed_wrong);
}

void Session::connect_new() {
  create_private_file(host_path_);
  new_file_created_ = true;
  try {
    const FileSalt salt = password_.empty() ? FileSalt{} : new_salt();
    connection_ = std::make_unique<Connection>(host_path_, options_);
    if (!password_.empty()) {
      const FileKey key{password_, salt};
      connection_->use_key(key);
      key.remember(password_);
    }
    connection_->first_read();
    identity_ = host_path_ + std::string(salt.begin(), salt.end());
  } catch (const support::RuntimeError&) {
    disconnect();
    throw;
  }
}

void Session::disconnect() noexcept {
  while (!readers_.empty()) {
    PendingReader* reader = readers_.back();
    readers_.pop_back();
    reader->abandon();
  }
  forget_catalogue();
  connection_.reset();
  in_transaction_ = false;
  if (std::exchange(new_file_created_, false)) remove_empty_file(host_path_);
}

Connection& Session::connection() {
  require_open();
  if (!connection_) connect_new();
  return *connection_;
}

bool Session::is_file_at(const std::string& host_path) const {
  std::error_code failure;
  return std::filesystem::equivalent(support::std_path(host_path), support::std_path(host_path_), failure);
}

const StoredCatalogue& Session::catalogue() {
  require_open();
  const ReadScope look{*this};
  return catalogue_at_hand();
}

bool Session::has_catalogue() const { return connection_ && (!new_file_ || connection_->in_transaction()); }

const StoredCatalogue& Session::catalogue_at_hand() {
  require_open();
  if (!has_catalogue()) {
    static const auto empty = std::make_shared<const StoredCatalogue>();
    catalogue_ = empty;
  }
  return catalogue_ ? *catalogue_ : catalogue();
}

void Session::adopt_catalogue() {
  const std::int64_t stamp = connection_->integer("PRAGMA user_version");
  if (catalogue_ && catalogue_->stamp() == stamp) return;
  forget_catalogue();
  catalogue_ = known_catalogues::find(identity_, stamp);
  if (catalogue_) return;
  catalogue_ = std::make_shared<const StoredCatalogue>(*connection_);
  if (!new_file_) known_catalogues::keep(identity_, catalogue_);
}

CatalogueChange Session::change_catalogue() {
  const auto copy = std::make_shared<StoredCatalogue>(catalogue());
  CatalogueChange change{*connection_, *copy};
  if (copy->stamp() == committed_stamp_) change.draw_stamp();
  catalogue_ = copy;
  return change;
}

TablePointer Session::table_at_hand(std::int64_t id) {
  TablePointer table = catalogue_at_hand().find(id);
  if (!table) raise(error_number::object_invalid);
  return table;
}

void Session::require_table(std::int64_t id, std::shared_ptr<const StoredCatalogue>& known) {
  const StoredCatalogue& now = catalogue_at_hand();
  if (known.get() == &now) return;
  if (!now.find(id)) raise(error_number::object_invalid);
  known = catalogue_;
}

TablePointer Session::table(std::int64_t id) {
  TablePointer table = catalogue().find(id);
  if (!table) raise(error_number::object_invalid);
  return table;
}

void Session::forget_catalogue() noexcept { catalogue_.reset(); }

void Session::remove_reader(PendingReader& reader) noexcept { std::erase(readers_, &reader); }

void Session::remove_row_holder(RowHolder& holder) noexcept { std::erase(row_holders_, &holder); }

void Session::prepare_change() {
  require_open();
  if (options_.read_only || (connection_ && connection_->read_only())) raise(error_number::read_only);
  require_transaction();
  // A recordset that reads on while rows change could meet a row twice, or never end. One that reads through another
  // handle of this process holds a lock that nobody could release while this handle waits for it.
  for (Session* session : open_sessions()) {
    if (session->host_path_ == host_path_) session->finish_reading();
  }
}

void Session::finish_reading() noexcept {
  while (!readers_.empty()) readers_.back()->finish();
}

void Session::require_transaction() const {
  // SQLite rolls back by itself where the disk fails or is full. The rest of the transaction must then not be committed
  // piece by piece.
  if (in_transaction_ && !connection_->in_transaction()) raise(error_number::disk_error);
}

void Session::begin_change() {
  Connection& file = connection();
  file.run(options_.read_only ? "BEGIN" : "BEGIN IMMEDIATE");
  try {
    file.use_small_cache();
    if (new_file_) {
      catalogue_.reset();
      CatalogueChange::create_tables(file);
    }
    // From here on nobody else changes the layout, so this is the last check of what is known of it.
    adopt_catalogue();
    committed_stamp_ = catalogue_->stamp();
  } catch (const support::RuntimeError&) {
    undo_change();
    throw;
  }
}

void Session::end_change() {
  try {
    counters_.store(*connection_);
    connection_->run("COMMIT");
  } catch (const support::RuntimeError&) {
    undo_change();
    throw;
  }
  counters_.committed();
  new_file_ = false;
  new_file_created_ = false;
  connection_->use_large_cache();
  if (catalogue_->stamp() != committed_stamp_) known_catalogues::keep(identity_, catalogue_);
}

void Session::undo_change() noexcept {
  in_transaction_ = false;
  counters_.rolled_back([this](std::int64_t table, std::int64_t last_row) {
    for (RowHolder* holder : row_holders_) holder->lose_rows_after(table, last_row);
  });
  if (new_file_) {
    disconnect();
    return;
  }
  give_up_transaction();
  forget_catalogue();
}

void Session::give_up_transaction() noexcept {
  try {
    if (connection_->in_transaction()) connection_->run("ROLLBACK");
    connection_->use_large_cache();
  } catch (const support::RuntimeError&) {
    // SQLite rolls back by itself where the file fails, and again when the connection is closed.
  }
}

void Session::begin_transaction() {
  require_open();
  if (in_transaction_) raise(error_number::invalid_operation);
  if (!options_.read_only) prepare_change();
  const WaitingScope waiting{*this};
  begin_change();
  in_transaction_ = true;
}

void Session::commit_transaction() {
  require_open();
  if (!in_transaction_) raise(error_number::no_transaction);
  in_transaction_ = false;
  const WaitingScope waiting{*this};
  if (!connection_->in_transaction()) {
    undo_change();
    raise(error_number::disk_error);
  }
  end_change();
}

void Session::rollback_transaction() {
  require_open();
  if (!in_transaction_) raise(error_number::no_transaction);
  finish_reading();
  undo_change();
}

std::int32_t Session::take_number(const TablePointer& table) {
  if (in_transaction_) return counters_.next_number(connection(), *table);
  AtomicChange change{*this};
  const std::int32_t number = counters_.next_number(connection(), *this->table(table->id));
  change.done();
  return number;
}

const TableStatements& Session::statements_of(const TablePointer& table) {
  TableStatements& statements = statements_[table->id];
  if (statements.table != table) statements = write_statements(table);
  return statements;
}

void Session::rewrite(const std::function<void(Connection& reader, const std::string& path)>& fill) {
  if (!connection_->hold_alone()) raise(error_number::file_in_use);
  try {
    write_anew(connection_, host_path_, password_, options_, fill);
  } catch (const support::RuntimeError&) {
    disconnect();
    connect_existing();
    throw;
  }
  disconnect();
}

void Session::compact(const std::function<void(const std::string& host_path)>& verify) {
  require_open();
  if (in_transaction_) raise(error_number::not_in_transaction);
  prepare_change();
  // A file that does not exist yet has nothing to compact.
  if (new_file_) return;
  rewrite([&](Connection& reader, const std::string& path) {
    copy_compacted(reader, path, password_);
    verify(path);
  });
  // The counters were set back, so what this handle gave beyond the highest number does not count any more.
  counters_ = {};
  connect_existing();
}

void Session::change_password(std::string_view old_password, std::string_view new_password) {
  require_open();
  if (is_too_long(new_password) || old_password != password_) raise(error_number::wrong_password);
  if (in_transaction_) raise(error_number::not_in_transaction);
  prepare_change();
  if (new_file_) {
    disconnect();
    password_ = new_password;
    return;
  }
  rewrite(
      [&](Connection& reader, const std::string& path) { copy_with_password(reader, path, password_, new_password); });
  wipe_memory(password_.data(), password_.size());
  password_ = new_password;
  connect_existing();
}

}  // namespace engine::embedded
