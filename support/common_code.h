// String, path and number routines that the wizard and the database code use everywhere (module "code"). Their
// behaviour at the edges is part of the contract. None throws.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class IniFiles;
class FileSystem;

/// Without outer blanks and characters below 20; empty where the text begins with NUL.
std::string trim(std::string_view text);

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

/// Glucose, text in the user's locale: times 18.016 rounded to a whole number, halves to even; times 0.0555 with one
/// decimal, shortest form.
std::string to_mg_dl(double mmol_l);
std::string to_mmol_l(double mg_dl);

enum class ValueKind { MgDl = 0, MmolL = 1, Percent = 2, MgL = 3, Kilogram = 4, Gram = 5, Pound = 6 };
/// A number with `decimals` places and, where asked for, its unit. A value not above the kind's lower limit (0 for all
/// kinds) comes unformatted.
std::string format_value(double value, ValueKind kind, int decimals, bool show_unit);

}  // namespace support
