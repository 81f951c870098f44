// The installation that this run configures: folders, files, registry keys, product and user. It is filled at start-up;
// later only the folder of the patients, the current database and the password change.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/language.h"

namespace wizard {

/// All paths are Windows paths; folders end with a backslash unless said otherwise.
struct InstallationConfig {
  std::string DefaultFont = "Tahoma";                                ///< face name
  std::string RegPath;                                               ///< name of the installation
  std::string RegKey;                                                ///< registry key of the installation
  std::string ProfilesKey;                                           ///< parent key of the user profiles
  std::string LanguageDLL;                                           ///< prefix of the language component's class name
  std::shared_ptr<const support::LanguageComponent> LanguageObject;  ///< null if it could not be created
  std::string Path;                                                  ///< the installation's folder
  std::string ImportDir;
  std::string DataDir;  ///< trailing backslash not enforced
  std::string ModulesDir;
  std::string LookupDB;     ///< file: laboratory definitions and preferred insulins for a new database
  std::string PatientData;  ///< folder of the patient databases; trailing backslash not enforced
  std::string IndexDB;      ///< file: the patient index
  std::int16_t COM = 1;     ///< number of the serial port
  std::string Helpfile;
  std::string Productname;
  std::string Manual;
  std::string User;        ///< name of the profile below ProfilesKey
  std::string CurrentDB;   ///< file: the patient's database; empty if there is none
  std::string DBPassword;  ///< of patient databases; must not get into a report, journal or message

  /// The wizard's own folder, with pelmar.ini, schemes.txt, home.ini and pics.
  std::string own_folder;
  bool ProEdition = false;

  std::string user_key() const { return ProfilesKey + User + "\\User Configuration"; }
  /// A text in the user's language or, if that does not have it, in German; empty for a number that neither has.
  std::string text(long number) const;
  /// The same with its "%1", "%2" … replaced by at most 9 values. A mark without a value stays.
  std::string text(long number, std::initializer_list<std::string_view> values) const;
  std::string text(long number, const std::vector<std::string>& values) const;
};

}  // namespace wizard
