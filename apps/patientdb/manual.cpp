#include "apps/patientdb/manual.h"

#include <algorithm>
#include <string>

namespace patientdb {
namespace {

constexpr Variable known_variables[] = {
    {"PATIENTDB_PASSWORD", "The database's password; empty: a database without one. Not set: the default one."},
    {"PATIENTDB_NEW_PASSWORD", "The password that password gives the database."},
    {"PATIENTDB_SOURCE_PASSWORD", "The password of the database that import reads, where it has another one."},
};

/// The text of a line, escaped so that groff shows it unchanged.
std::string for_groff(std::string_view text) {
  std::string escaped;
  if (text.starts_with('.') || text.starts_with('\'')) escaped = "\\&";
  for (const char character : text) {
    if (character == '\\') {
      escaped += "\\e";
    } else {
      if (character == '-') escaped += '\\';
      escaped += character;
    }
  }
  return escaped;
}

/// Consecutive lines are one paragraph; an empty line ends it.
void write_paragraphs(std::ostream& out, std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    out << (line.empty() ? ".PP" : for_groff(line)) << '\n';
  }
}

void write_item(std::ostream& out, std::string_view name, std::string_view value, std::string_view help) {
  out << ".TP\n\\fB" << for_groff(name) << "\\fR";
  if (!value.empty()) out << " \\fI" << for_groff(value) << "\\fR";
  out << '\n' << for_groff(help) << '\n';
}

std::string names_of(std::span<const console::Option> options) {
  std::string names;
  for (const console::Option& option : options) names.append(names.empty() ? "" : " ").append(option.name);
  return names;
}

std::string in_single_quotes(std::string_view text) {
  std::string quoted = "'";
  for (const char character : text) quoted.append(character == '\'' ? 2 : 1, character);
  return quoted + "'";
}

}  // namespace

std::span<const Variable> variables() { return known_variables; }

void write_manual(std::ostream& out, std::span<const Described> commands) {
  out << R"(.TH PATIENTDB 1 "" ")" << for_groff(console::version_text("patientdb").substr(0, 15)) << "\"\n"
      << ".SH NAME\npatientdb \\- creates, shows and changes patient databases\n"
      << ".SH SYNOPSIS\n\\fBpatientdb\\fR \\fICOMMAND\\fR \\fIFILE\\fR …\n"
      << ".br\n\\fBpatientdb\\fR \\-\\-help | \\-\\-version | \\-\\-manual | \\-\\-completion bash|powershell\n"
      << ".SH COMMANDS\n";
  for (const auto& [command, options] : commands) {
    out << ".SS " << command.name << '\n' << "\\fBpatientdb " << command.name << "\\fR ";
    out << for_groff(command.usage) << "\n.PP\n" << for_groff(command.summary) << '\n';
    if (!command.details.empty()) out << ".PP\n";
    write_paragraphs(out, command.details);
    for (const console::Option& option : options) write_item(out, option.name, option.value_name, option.help);
  }
  out << ".SH \"EXIT STATUS\"\n";
  for (const console::ExitCode& row : console::common_exit_codes) {
    write_item(out, std::to_string(row.code), "", row.meaning);
  }
  write_item(out, std::to_string(own_exit_code.code), "", own_exit_code.meaning);
  out << ".SH ENVIRONMENT\n";
  for (const Variable& row : variables()) write_item(out, row.name, "", row.help);
}

void write_bash_completion(std::ostream& out, std::span<const Described> commands) {
  out << "# Completion of patientdb for bash.\n_patientdb() {\n  local word=${COMP_WORDS[COMP_CWORD]} words=\n"
      << "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n    words='--help --version";
  for (const Described& row : commands) out << ' ' << row.command.name;
  out << "'\n  elif [[ $word == -* ]]; then\n    case ${COMP_WORDS[1]} in\n";
  for (const auto& [command, options] : commands) {
    out << "      " << command.name << ") words='" << names_of(options) << "' ;;\n";
  }
  out << "    esac\n  fi\n  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n}\n"
      << "complete -o default -F _patientdb patientdb\n";
}

void write_powershell_completion(std::ostream& out, std::span<const Described> commands) {
  out << "# Completion of patientdb for PowerShell.\n"
      << "Register-ArgumentCompleter -Native -CommandName patientdb, patientdb.exe -ScriptBlock {\n"
      << "  param($word, $line, $position)\n  $options = @{\n";
  for (const auto& [command, options] : commands) {
    out << "    " << in_single_quotes(command.name) << " = " << in_single_quotes(names_of(options)) << '\n';
  }
  out << "  }\n  $words = @($line.CommandElements | ForEach-Object { $_.ToString() })\n"
      << "  $command = if ($words.Count -gt 1) { $words[1] } else { '' }\n"
      << "  if ($word -like '-*' -and $options.ContainsKey($command)) { $offered = $options[$command] -split ' ' }\n"
      << "  elseif ($words.Count -lt 2 -or ($words.Count -eq 2 -and $word -ne '')) {\n"
      << "    $offered = @('--help', '--version') + @($options.Keys | Sort-Object)\n  }\n  else { $offered = @() }\n"
      << "  $offered | Where-Object { $_ -like \"$word*\" } |\n"
      << "    ForEach-Object { [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_) "
         "}\n}\n";
}

}  // namespace patientdb
