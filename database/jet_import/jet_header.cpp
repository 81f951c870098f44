#include "database/jet_import/jet_header.h"

#include <array>
#include <cstring>
#include <numeric>
#include <utility>

#include "support/encoding.h"
#include "support/error.h"

namespace jet_import {
namespace {

constexpr std::string_view signature{"\0\1\0\0Standard Jet DB\0", 20};
constexpr std::size_t version_offset = 0x14, masked_offset = 0x18, code_page_offset = 0x3C, password_offset = 0x42,
                      creation_date_offset = 0x72;
constexpr std::size_t jet3_password_bytes = 20, jet4_password_bytes = 40;
constexpr std::array<std::uint8_t, 4> page_key{0xC7, 0xDA, 0x39, 0x6B};

std::uint8_t byte_of(char c) { return static_cast<std::uint8_t>(c); }

/// RC4; it masks and unmasks.
std::string unmasked(std::string bytes) {
  std::array<std::uint8_t, 256> state{};
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  std::uint8_t j = 0;
  for (std::size_t i = 0; i < state.size(); ++i) {
    j = static_cast<std::uint8_t>(j + state[i] + page_key[i % page_key.size()]);
    std::swap(state[i], state[j]);
  }
  std::uint8_t i = 0;
  j = 0;
  for (char& c : bytes) {
    j = static_cast<std::uint8_t>(j + state[++i]);
    std::swap(state[i], state[j]);
    c = static_cast<char>(byte_of(c) ^ state[static_cast<std::uint8_t>(state[i] + state[j])]);
  }
  return bytes;
}

std::u16string utf16_units(std::string_view bytes) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units += static_cast<char16_t>(byte_of(bytes[i]) | byte_of(bytes[i + 1]) << 8U);
  }
  return units;
}

/// Stretches of single bytes alternate with stretches of whole units. A zero byte switches between them.
std::u16string expanded(std::string_view bytes) {
  std::u16string units;
  bool single = true;
  for (std::size_t i = 0; i < bytes.size();) {
    if (bytes[i] == '\0') {
      single = !single;
      ++i;
    } else if (single) {
      units += byte_of(bytes[i++]);
    } else {
      units += utf16_units(bytes.substr(i, 2));
      i += 2;
    }
  }
  return units;
}

/// In a Jet 4 file the password is masked a second time, with the date of creation.
std::string jet4_password(std::string_view header) {
  double date = 0;
  std::memcpy(&date, header.data() + creation_date_offset, sizeof date);
  constexpr double last_date = 2958466;
  if (!(date > -last_date && date < last_date)) date = 0;
  const auto mask = static_cast<std::uint32_t>(static_cast<std::int32_t>(date));
  std::string bytes(header.substr(password_offset, jet4_password_bytes));
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(byte_of(bytes[i]) ^ mask >> i % 4 * 8U);
  const std::u16string units = utf16_units(bytes);
  return support::utf8_from_utf16(units.substr(0, units.find(u'\0')));
}

std::string jet3_password(std::string_view header) {
  const std::string_view bytes = header.substr(password_offset, jet3_password_bytes);
  return support::utf8_from_cp1252(bytes.substr(0, bytes.find('\0')));
}

}  // namespace

JetHeader read_jet_header(std::string_view beginning) {
  if (beginning.size() < jet_header_size || !beginning.starts_with(signature)) {
    throw support::RuntimeError(support::error_number::unknown_format,
                                "Unrecognized database format: this is no Jet database.");
  }
  const std::uint8_t version = byte_of(beginning[version_offset]);
  if (version > 1) {
    throw support::RuntimeError(support::error_number::unknown_format,
                                "Unrecognized database format: the file was written by a newer engine than Jet 4.");
  }
  const std::string header = std::string(beginning.substr(0, masked_offset)) +
                             unmasked(std::string(beginning.substr(masked_offset, jet_header_size - masked_offset)));
  JetHeader found;
  found.version = version == 0 ? JetVersion::Jet3 : JetVersion::Jet4;
  found.code_page = utf16_units(std::string_view(header).substr(code_page_offset, 2)).front();
  found.password = version == 0 ? jet3_password(header) : jet4_password(header);
  return found;
}

std::string jet_text(JetVersion version, std::string_view bytes) {
  if (version == JetVersion::Jet3) return support::utf8_from_cp1252(bytes);
  if (bytes.starts_with("\xFF\xFE")) return support::utf8_from_utf16(expanded(bytes.substr(2)));
  return support::utf8_from_utf16(utf16_units(bytes));
}

}  // namespace jet_import
