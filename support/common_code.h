// String, path and number routines that the wizard and the database code use everywhere (module "code"). Their
// behaviour at the edges is part of the contract. None raises.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class IniFiles;
class FileSystem;

/// A decimal digit, whatever the locale.
constexpr bool is_digit(char character) noexcept { return character >= '0' && character <= '9'; }

/// Without outer blanks and characters below 20; empty where the text begins with NUL.
std::string trim(std::string_view text);

/// Without these characters at both ends.
std::string_view strip(std::string_view text, std::string_view characters) noexcept;

/// Splits at `delimiter` into `pieces` and returns the upper index (count less one). An empty text returns -1 and
/// leaves `pieces` as it was; a trailing delimiter yields no empty last piece.
std::int16_t Split(std::string_view text, std::vector<std::string>& pieces, std::string_view delimiter);

/// Reduces every run of backslashes to one; a path that begins with a backslash begins with two afterwards.
void RemoveSlashes(std::string& path);

/// Section names of the scheme file, in file order, into `names`; returns their count. A missing or empty file returns
/// 0 and leaves `names` as it was. At most 4095 characters of names are read: only whole names before the cut count.
std::int16_t GetSchemes(const IniFiles& ini, const FileSystem& files, std::string_view schemes_file,
                        std::vector<std::string>& names);

enum class PathPart { Drive = 0, Folder = 1, FileName = 2, Shortened = 3 };

/// Part of a Windows path; any other number gives the empty text. The folder keeps its trailing backslash.
std::string ExtractFromPath(std::string_view path, int part);

/// Milligrams of glucose in a decilitre where a litre holds one millimole; and the way back, which is deliberately not
/// the reciprocal: a value converted there and back may drift by one.
inline constexpr double mg_dl_per_mmol_l = 18.016, mmol_l_per_mg_dl = 0.0555;

/// Glucose in the other unit, as text in the user's locale: mg/dl as a whole number, halves to even, empty outside the
/// 16-bit range; mmol/l with at most one decimal.
std::string to_mg_dl(double mmol_l);
std::string to_mmol_l(double mg_dl);

enum class ValueKind { MgDl = 0, MmolL = 1, Percent = 2, MgL = 3, Kilogram = 4, Gram = 5, Pound = 6 };

/// A number in the user's locale with `decimals` places (0: as many as the kind usually has) and, where asked for, its
/// unit. A value not above 0 comes with as many places as it has.
std::string format_value(double value, ValueKind kind, int decimals, bool show_unit);

}  // namespace support
