#include "tests/faults/unsynced_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

#include "tests/support/file_content.h"

namespace faults {
namespace {

constexpr std::size_t sector = 512;

void put(std::string& content, std::size_t offset, std::string_view bytes) {
  content.resize(std::max(content.size(), offset + bytes.size()));
  content.replace(offset, bytes.size(), bytes);
}

}  // namespace

void UnsyncedFiles::opened(const std::string& path, bool existed) {
  const auto [place, is_new] = files_.try_emplace(path);
  if (is_new && existed) place->second.durable = support::testing::content_of(path);
  place->second.created_anew |= std::exchange(place->second.removed, false);
}

void UnsyncedFiles::written(const std::string& path, std::int64_t offset, std::string_view bytes) {
  files_[path].changes.push_back({offset, std::string(bytes)});
}

void UnsyncedFiles::truncated(const std::string& path, std::int64_t size) {
  files_[path].changes.push_back({size, std::nullopt});
}

void UnsyncedFiles::synced(const std::string& path) {
  File& file = files_[path];
  file.durable = support::testing::content_of(path);
  file.changes.clear();
  file.created_anew = false;
}

void UnsyncedFiles::removed(const std::string& path) {
  File& file = files_[path];
  file.changes.clear();
  file.removed = true;
}

void UnsyncedFiles::move_files(const std::string& source, const std::string& target) {
  std::map<std::string, File> moved;
  for (auto& [path, file] : files_) {
    const bool inside = path.starts_with(source + "/");
    moved[inside ? target + path.substr(source.size()) : path] = std::move(file);
  }
  files_ = std::move(moved);
}

void UnsyncedFiles::renamed(const std::string& source, const std::string& target) {
  if (std::filesystem::is_directory(source)) {
    move_files(source, target);
    folder_renames_.push_back({source, target});
    return;
  }
  const auto known = [&](const std::string& path) {
    const auto [place, is_new] = files_.try_emplace(path);
    if (is_new) place->second.durable = support::testing::content_of(path);
    return place->second;
  };
  renames_.push_back({source, target, known(target)});
  files_[target] = known(source);
  files_.erase(source);
}

void UnsyncedFiles::folder_synced() {
  renames_.clear();
  folder_renames_.clear();
  std::erase_if(files_, [](const auto& file) { return file.second.removed; });
}

void UnsyncedFiles::forget() {
  files_.clear();
  renames_.clear();
  folder_renames_.clear();
}

std::optional<std::string> UnsyncedFiles::surviving(const File& file, bool torn, std::mt19937& coins) {
  const auto reached_the_disk = [&] { return torn && (coins() & 1U) != 0; };
  if (file.removed && reached_the_disk()) return std::nullopt;
  if ((!file.durable || file.created_anew) && !reached_the_disk()) return file.durable;
  std::string content = file.created_anew ? "" : file.durable.value_or("");
  for (const Change& change : file.changes) {
    const auto offset = static_cast<std::size_t>(change.offset);
    if (!change.bytes) {
      if (reached_the_disk()) content.resize(offset);
      continue;
    }
    const std::string_view bytes = *change.bytes;
    for (std::size_t done = 0; done < bytes.size(); done += sector) {
      if (reached_the_disk()) put(content, offset + done, bytes.substr(done, sector));
    }
  }
  return content;
}

void UnsyncedFiles::cut(bool torn, unsigned seed) {
  std::mt19937 coins(seed);
  for (; !folder_renames_.empty(); folder_renames_.pop_back()) {
    if (torn && (coins() & 1U) != 0) break;
    const auto& [source, target] = folder_renames_.back();
    std::error_code ignored;
    std::filesystem::rename(target, source, ignored);
    move_files(target, source);
  }
  for (; !renames_.empty(); renames_.pop_back()) {
    if (torn && (coins() & 1U) != 0) break;
    const Rename& undone = renames_.back();
    files_[undone.source] = files_[undone.target];
    files_[undone.target] = undone.replaced;
  }
  for (const auto& [path, file] : files_) {
    const std::optional<std::string> content = surviving(file, torn, coins);
    if (content) {
      std::ofstream(path, std::ios::binary | std::ios::trunc) << *content;
    } else {
      std::error_code ignored;
      std::filesystem::remove(path, ignored);
    }
  }
}

}  // namespace faults
