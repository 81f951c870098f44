// Refreshing the patient index: a thousand patients beside a hundred. The files are copies of one, as an administrator
// rolls them out, and so share password and salt: a key is derived once, and a refresh that did it per patient would
// take a minute and more.
#include <memory>
#include <stdexcept>

#include "bench/jobs.h"
#include "bench/long_history.h"
#include "bench/patient_file.h"
#include "database/formatted.h"
#include "database/index_database.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

/// An index database and the files of its patients in a folder of their own.
class Practice {
 public:
  Practice(const fs::path& folder, int patients)
      : folder_(folder / ("practice" + std::to_string(patients))), patients_(patients) {}

  /// The files once; the index as it is when nothing was refreshed yet.
  void prepare() const {
    fs::create_directories(folder_);
    if (!fs::exists(file(patients_))) {
      create_patient_file(file(1));
      for (int id = 2; id <= patients_; ++id) fs::copy_file(file(1), file(id));
    }
    fs::remove(index());
    const std::string name = windows_path(index());
    if (database::CreateIndexDatabase(environment(), name) != 1 ||
        !database::db_UpgradeIndexDatabase(environment(), name, {}).complete()) {
      throw std::runtime_error("no index database");
    }
  }

  void refresh() const {
    const database::Environment surroundings = environment();
    const std::string name = windows_path(index());
    for (int id = 1; id <= patients_; ++id) {
      database::PatientRecord patient;
      patient.index_id = id;
      if (database::db_ProcessIndex(surroundings, name, patient, database::index_action::refresh,
                                    windows_path(file(id))) == 0) {
        throw std::runtime_error("not refreshed: " + std::to_string(id));
      }
    }
  }

 private:
  database::Environment environment() const {
    database::Environment environment = willing_environment();
    environment.password = database::default_password;
    environment.data_folder = windows_path(folder_);
    return environment;
  }
  fs::path index() const { return folder_ / "index.mdb"; }
  fs::path file(int id) const { return folder_ / database::formatted("db4_%06d.das", id); }

  fs::path folder_;
  int patients_;
};

}  // namespace

Job index_growth_job(const fs::path& folder) {
  const auto large = std::make_shared<Practice>(folder, 1000), small = std::make_shared<Practice>(folder, 100);
  return {"refresh the index, 1,000 patients beside 100",
          11,
          3,
          [=] { large->refresh(); },
          [=] { small->refresh(); },
          [=] {
            large->prepare();
            small->prepare();
          }};
}

}  // namespace bench
