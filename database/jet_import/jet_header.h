// The first page of a Jet file: which version wrote it, and its password. The page is masked with a fixed key stream.
// The password stands under that mask and encrypts nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace jet_import {

/// How many bytes of the file are needed.
inline constexpr std::size_t jet_header_size = 0x98;

enum class JetVersion : std::uint8_t { Jet3, Jet4 };

struct JetHeader {
  JetVersion version = JetVersion::Jet3;
  /// The code page of the texts in a Jet 3 file.
  std::uint16_t code_page = 0;
  /// Empty where the file has none.
  std::string password;
};

/// Raises 3343 for a file of another kind or of a newer engine.
JetHeader read_jet_header(std::string_view beginning);

/// Converts a stored text to UTF-8. A Jet 3 file stores CP1252; a Jet 4 file stores UTF-16, or a compressed form
/// without the high bytes.
std::string jet_text(JetVersion version, std::string_view bytes);

}  // namespace jet_import
