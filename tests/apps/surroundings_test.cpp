// Machines that differ from the developer's: places that cannot be written, files that are far too large, names that
// confuse scripts.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/file_system.h"
#include "tests/apps/process_run.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;

class Surroundings : public ProcessTest {
 protected:
  Surroundings() {
    folder_.write("home/vantrix.ini", "[setup]\r\nRegPath=vantrix\r\n");
    folder_.write("home/pelmar.ini", "[CHARTS]\r\nday=1^2\r\n");
    folder_.write("home/home.ini", "[setup]\r\nhomepage=H\r\n[H]\r\nCHART1=0|0|old|1\r\n");
    outside_.write("answers.ini", "[PatDat]\ntxtFirstName=J\ntxtName=M\n[Pics]\noptThumb=day\n");
  }
  std::string home() const { return folder_.file("home"); }
  std::vector<std::string> arguments() const {
    return {"--program-dir", home(), "--answers", outside_.file("answers.ini")};
  }
  /// Writes a hive that names another patients' folder.
  void place_patients(const std::string& folder) const {
    std::string path = support::host_file_system().windows_path(folder);
    for (std::size_t at = 0; (at = path.find('\\', at)) != std::string::npos; at += 2) path.insert(at, "\\");
    folder_.write("home/registry.reg",
                  "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Lumoraquant\\vantrix]\r\n"
                  "\"PatientData\"=\"" +
                      path + "\"\r\n");
  }
};

/// Removes all rights to write below a folder, and restores them at the end.
class ReadOnly {
 public:
  explicit ReadOnly(fs::path folder) : folder_(std::move(folder)) { allow(fs::perm_options::remove); }
  ~ReadOnly() { allow(fs::perm_options::add); }
  ReadOnly(const ReadOnly&) = delete;
  ReadOnly& operator=(const ReadOnly&) = delete;

 private:
  void allow(fs::perm_options change) const {
    constexpr auto writing = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    constexpr auto reading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
      fs::permissions(entry.path(), reading, fs::perm_options::add);
      fs::permissions(entry.path(), writing & fs::perms::owner_all, change);
    }
    fs::permissions(folder_, fs::perms::owner_write, change);
  }
  fs::path folder_;
};

TEST_F(Surroundings, AReadOnlyInstallationIsReportedAndLosesNothing) {
  const std::string patients = outside_.file("patients");
  place_patients(patients);
  fs::create_directory(patients);
  fs::permissions(outside_.path(), fs::perms::all);
  ASSERT_EQ(chown(patients.c_str(), getuid() == 0 ? ordinary_user : getuid(), getgid()), 0);
  const std::string report = outside_.file("report");
  const auto before = folder_.snapshot();
  {
    const ReadOnly installation(folder_.path() / "home");
    EXPECT_EQ(as_ordinary_user([&] {
                const Outcome outcome = run_batch(arguments());
                outside_.write("report", outcome.out + outcome.err);
                return outcome.code;
              }),
              1);
  }
  EXPECT_EQ(folder_.snapshot(), before);
  EXPECT_THAT(content_of(report), AllOf(HasSubstr("registry.reg"), HasSubstr("home.ini")));
  EXPECT_THAT(run_patientdb({"sql", patients + "/M_J.das", "SELECT name FROM patdat"}).out, HasSubstr("M"))
      << "what can be written is";
}

TEST_F(Surroundings, AReadOnlyFolderOfPatientsIsReportedAndLosesNothing) {
  fs::create_directory(home() + "/patients");
  ASSERT_EQ(run_patientdb({"create", home() + "/patients/old.das"}).code, 0);
  const auto before = folder_.snapshot();
  const ReadOnly installation(folder_.path() / "home");
  EXPECT_EQ(as_ordinary_user([&] {
              const Outcome outcome = run_batch(arguments());
              return outcome.code == 1 && outcome.out.find("M_J.das") != std::string::npos ? 0 : 10;
            }),
            0);
  EXPECT_EQ(folder_.snapshot(), before);
}

/// The most memory that a batch run uses, in KiB.
long most_memory(const std::vector<std::string>& arguments, int expected) {
  const std::string program = BUILD_DIR "/bin/firststeps_batch";
  long most = 0;
  int pipe_ends[2];
  EXPECT_EQ(pipe(pipe_ends), 0);
  const int code = in_child([&] {
    const int inner = in_child([&] {
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, STDOUT_FILENO);
      dup2(nowhere, STDERR_FILENO);
      std::vector<char*> words{const_cast<char*>(program.c_str())};
      for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
      words.push_back(nullptr);
      execv(program.c_str(), words.data());
      return 127;
    });
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return write(pipe_ends[1], &usage.ru_maxrss, sizeof usage.ru_maxrss) == sizeof usage.ru_maxrss ? inner : 126;
  });
  EXPECT_EQ(read(pipe_ends[0], &most, sizeof most), static_cast<ssize_t>(sizeof most));
  close(pipe_ends[0]);
  close(pipe_ends[1]);
  EXPECT_EQ(code, expected);
  return most;
}

TEST_F(Surroundings, FilesOfAHundredMegabytesAreRefusedUnread) {
  constexpr std::uintmax_t huge = 100 << 20;
  constexpr long allowance = 20 << 10;
  std::vector<std::string> dry_run = arguments();
  dry_run.emplace_back("--dry-run");
  const long usual = most_memory(dry_run, 0);
  for (const std::string name : {"vantrix.ini", "setup.ini", "pelmar.ini", "home.ini", "schemes.txt", "registry.reg"}) {
    const std::string kept = content_of(home() + "/" + name);
    folder_.write("home/" + name, kept);
    fs::resize_file(home() + "/" + name, huge);
    EXPECT_LT(most_memory(dry_run, 2), usual + allowance) << name;
    kept.empty() ? static_cast<void>(fs::remove(home() + "/" + name))
                 : static_cast<void>(folder_.write("home/" + name, kept));
  }
  fs::resize_file(outside_.file("answers.ini"), huge);
  EXPECT_LT(most_memory(dry_run, 2), usual + allowance);
}

TEST_F(Surroundings, AFolderOfAHundredThousandFilesIsListedAndWorkedIn) {
  // The files are put into memory, if the machine has such a place: making them on the disk takes long.
  const fs::path memory = "/dev/shm";
  const TemporaryFolder patients(fs::is_directory(memory) ? memory : fs::temp_directory_path());
  for (int i = 0; i < 100000; ++i) {
    ASSERT_EQ(mknod(patients.file(std::to_string(i) + ".das").c_str(), S_IFREG | 0600, 0), 0);
  }
  place_patients(patients.path().string());
  const support::FileSystem& files = support::host_file_system();
  EXPECT_EQ(files.files(files.windows_path(patients.path().string()), "*.das").size(), 100000U);
  const Outcome outcome = run_batch(arguments());
  EXPECT_EQ(outcome.code, 0) << outcome.err << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("M_J.das"));
}

TEST_F(Surroundings, AUserProfileWithUmlautsAndSignsWorks) {
  const std::string profile = folder_.file("Jörg Müller #1 & Söhne's (100%)");
  for (const std::string part : {"", "/tmp", "/user"}) fs::create_directory(profile + part);
  const std::string quoted = "\"$PROFILE\"";
  const Outcome outcome = shell("PROFILE=$(cat '" + outside_.write("profile", profile) + "'); cp -r '" + home() +
                                "'/* " + quoted + R"(; export HOME="$PROFILE" TMPDIR="$PROFILE/tmp"; unset XDG_DATA_HOME
    cd "$PROFILE" && printf '[A]\nDesc=a\n[B]\nDesc=b\n' >schemes.txt && echo menu >user/main.mnu
    printf '[setup]\ndisplay=PatDat|Schema|Fertig\n' >pelmar.ini
    printf '[PatDat]\ntxtFirstName=J\ntxtName=M\n[Schema]\ncbSchema=1\n' >answers.ini
    $BIN/firststeps_batch --program-dir . --answers answers.ini --journal journal.txt &&
    $BIN/patientdb index patients/index.mdb create && $BIN/patientdb index patients/index.mdb refresh 0 patients/M_J.das)");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("patient 1"));
  EXPECT_EQ(content_of(profile + "/.local/share/Trash/files/main.mnu"), "menu\n");
  EXPECT_THAT(content_of(profile + "/registry.reg"), HasSubstr("M_J.das"));
  EXPECT_TRUE(fs::is_empty(profile + "/tmp")) << "nothing is left in the folder for temporary files";
}

}  // namespace
}  // namespace apps_test
