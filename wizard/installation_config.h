// The installation that this run configures: folders, files, registry keys, product and user. Filled once at start-up.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "support/language.h"

namespace wizard {

/// All paths are Windows paths; folders end with a backslash unless said otherwise.
struct InstallationConfig {
  std::string DefaultFont = "Tahoma";
  std::string RegPath;                                               ///< name of the installation
  std::string RegKey;                                                ///< registry key of the installation
  std::string ProfilesKey;                                           ///< parent key of the user profiles
  std::string LanguageDLL;                                           ///< prefix of the language component's class name
  std::shared_ptr<const support::LanguageComponent> LanguageObject;  ///< null where it could not be created
  std::string Path;
  std::string ImportDir;
  std::string DataDir;  ///< trailing backslash not enforced
  std::string ModulesDir;
  std::string LookupDB;
  std::string PatientData;
  std::string IndexDB;
  std::int16_t COM = 1;
  std::string Helpfile;
  std::string Productname;
  std::string Manual;
  std::string User;
  std::string CurrentDB;  ///< empty where there is none
  std::string DBPassword;

  /// The wizard's own folder, with its trailing backslash (pelmar.ini, schemes.txt, home.ini and pics lie here).
  std::string own_folder;
  bool ProEdition = false;

  std::string user_key() const { return ProfilesKey + User + "\\User Configuration"; }
  std::string text(long number) const { return LanguageObject ? LanguageObject->loadres(number) : std::string(); }
};

}  // namespace wizard
