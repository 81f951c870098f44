// The programs as a user starts them, also on a machine that denies them something.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <set>

#include "tests/apps/process_run.h"

namespace apps_test {
namespace {

using Process = ProcessTest;

TEST_F(Process, TakesUmlautsPasswordAndExitCodesThroughTheRealMain) {
  const std::string file = folder_.file("Größe.das");
  const Outcome outcome = shell("export PATIENTDB_PASSWORD='geheim'; $BIN/patientdb create '" + file +
                                "' --name 'Öztürk' --firstname Ayşe && $BIN/patientdb sql '" + file +
                                "' 'SELECT name, firstname FROM patdat' --json && $BIN/patientdb info '" + file +
                                "' >/dev/full; echo $?; unset PATIENTDB_PASSWORD; $BIN/patientdb info '" + file + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("[[\"Öztürk\",\"Ayşe\"]]"));
  EXPECT_THAT(outcome.out, HasSubstr("\n1\n"));
  EXPECT_THAT(outcome.err, StartsWith("error 57: "));
  EXPECT_THAT(outcome.err, HasSubstr("\nerror 3031: "));
}

/// The programs choose the salts here. A test program that makes files repeats them.
TEST_F(Process, EveryNewFileHasASaltOfItsOwn) {
  std::set<std::string> salts;
  for (const std::string& file : {folder_.file("1.das"), folder_.file("2.das")}) {
    ASSERT_EQ(shell("$BIN/patientdb create '" + file + "'").code, 0);
    salts.insert(content_of(file).substr(0, 16));
  }
  EXPECT_EQ(salts.size(), 2U);
}

TEST_F(Process, FindsTheInstallationBesideTheProgramAndRecyclesItsMenus) {
  const std::string installation = folder_.file("vantrix");
  folder_.write("vantrix/vantrix.ini", "[setup]\nRegPath=vantrix\n");
  folder_.write("vantrix/pelmar.ini", "[setup]\ndisplay=INtro|PatDat|Schema|Fertig\n");
  folder_.write("vantrix/schemes.txt", "[A]\nDesc=a\n[B]\nDesc=b\n");
  folder_.write("vantrix/user/main.mnu", "menu");
  folder_.write("vantrix/user/keep.txt", "kept");
  const std::string answers =
      outside_.write("answers.ini", "[PatDat]\ntxtName=M\ntxtFirstName=J\n[Schema]\ncbSchema=1\n");
  const Outcome outcome =
      shell("export XDG_DATA_HOME='" + folder_.file("data") + "'; cp -r $BIN/texts $BIN/firststeps_batch '" +
            installation + "' && '" + installation + "/firststeps_batch' --answers '" + answers + "'");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("recycled"));
  EXPECT_EQ(content_of(folder_.file("data/Trash/files/main.mnu")), "menu");
  EXPECT_EQ(content_of(folder_.file("vantrix/user/keep.txt")), "kept");
  EXPECT_THAT(content_of(folder_.file("vantrix/registry.reg")), HasSubstr("\"Scheme\"=\"1\""));
}

TEST_F(Process, AFileWithoutWriteAccessIsReadButNotChanged) {
  const std::string file = folder_.file("read.das");
  ASSERT_EQ(run_patientdb({"create", file}).code, 0);
  chmod(file.c_str(), 0444);
  chmod(folder_.path().c_str(), 0555);
  const auto before = folder_.snapshot();
  const int code = as_ordinary_user([&] {
    if (run_patientdb({"info", file}).code != 0) return 10;
    const Outcome refused = run_patientdb({"sql", file, "DELETE * FROM patdat"});
    return refused.code == 1 && refused.err.starts_with("error 30") ? 0 : 11;
  });
  chmod(folder_.path().c_str(), 0755);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(folder_.snapshot(), before);
}

TEST_F(Process, AFolderThatMayNotBeReadIsNamed) {
  folder_.write("vantrix.ini", "[setup]\nRegPath=vantrix\n");
  chmod(folder_.path().c_str(), 0311);
  const int code = as_ordinary_user([&] {
    const Outcome refused = run_batch({"--program-dir", folder_.file("")});
    return refused.code == 2 && refused.err.starts_with("The program folder " + folder_.file("")) ? 0 : 10;
  });
  chmod(folder_.path().c_str(), 0755);
  EXPECT_EQ(code, 0);
}

TEST_F(Process, ShellAndManualReaderTakeWhatTheProgramWritesForThem) {
  const Outcome completed = shell(
      "export BIN; bash -c 'source <($BIN/patientdb --completion bash); COMP_WORDS=(patientdb exp); COMP_CWORD=1; "
      "_patientdb; "
      "echo ${COMPREPLY[*]}; COMP_WORDS=(patientdb export a b --enc); COMP_CWORD=4; _patientdb; echo ${COMPREPLY[*]}'");
  EXPECT_EQ(completed.err + completed.out, "export\n--encoding\n");
  const Outcome shown = shell("$BIN/patientdb --manual | groff -man -Kutf8 -Tutf8 -ww -P-c -P-u -P-b -P-o");
  EXPECT_EQ(shown.err, "");
  EXPECT_THAT(shown.out, HasSubstr("--leave-out-bytes"));
}

TEST_F(Process, AFullDiskLeavesNoHalfDatabase) {
  const std::string file = folder_.file("full.das");
  const int code = in_child([&] {
    // A limit on the size of files plays a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{64 * 1024, 64 * 1024};
    setrlimit(RLIMIT_FSIZE, &limit);
    const Outcome refused = run_patientdb({"create", file});
    return refused.code == 1 && refused.err.starts_with("error 3043: ") ? 0 : 10;
  });
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(folder_.snapshot().empty());
}

}  // namespace
}  // namespace apps_test
