// The first page of a Jet file: which version wrote it, and the password that it wants. The page is masked with a fixed
// key stream; the password stands under it and encrypts nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace jet_import {

/// Bytes of the file that are enough.
inline constexpr std::size_t jet_header_size = 0x98;

enum class JetVersion : std::uint8_t { Jet3, Jet4 };

struct JetHeader {
  JetVersion version = JetVersion::Jet3;
  /// Of the texts of a Jet 3 file.
  std::uint16_t code_page = 0;
  /// Empty where the file wants none.
  std::string password;
};

/// Raises 3343 for a file of another kind or of a newer engine.
JetHeader read_jet_header(std::string_view beginning);

/// A text as the file stores it, in UTF-8: CP1252 in a Jet 3 file; in a Jet 4 file UTF-16, or compressed with the high
/// bytes left out.
std::string jet_text(JetVersion version, std::string_view bytes);

}  // namespace jet_import
