// Pump data as newer layouts keep them: durations in seconds, and a summary of each day.
#include <memory>
#include <vector>

#include "database/pump_days.h"
#include "database/table_procedures.h"
#include "database/upgrade/actions.h"

namespace database::upgrade {
namespace {

constexpr std::uint32_t ok_cancel = 1, stop_icon = 16;
constexpr int button_ok = 1;
constexpr long progress_text = 2011;
/// From so many days on the user is asked.
constexpr std::int32_t many_days = 10;

constexpr std::string_view question =
    "Zur künftig schnelleren Berechnung der Pumpenstatistik müssen die gesamten Daten nun einmalig konvertiert "
    "werden\r\n"
    "Dieser Vorgang kann sehr lange dauern und sollte nicht abgebrochen werden !\r\n"
    "Bitte klicken Sie auf OK, wenn die Konvertierung jetzt erfolgen kann; ansonsten klicken Sie auf ABBRUCH";

std::int32_t count_days(engine::Database& database) {
  const auto days = database.open_recordset("SELECT vdate from insulinpump Group by vdate");
  if (!days->eof()) days->move_last();
  return days->record_count();
}

/// Raises 3059 where nobody can be asked: an answer of "no" is never asked for again.
bool may_convert(const Environment& environment, std::int32_t days) {
  if (days < many_days) return true;
  if (!environment.message_box) {
    throw support::RuntimeError(support::error_number::cancelled,
                                "The question about the pump data finds nobody to answer it.");
  }
  return environment.message_box(question, ok_cancel | stop_icon, "Achtung") == button_ok;
}

/// The progress from its start to its end, where there is one.
class ShownProgress {
 public:
  ShownProgress(const Environment& environment, std::int32_t days) : progress_(environment.progress) {
    if (progress_) progress_->start(environment.text(progress_text), days);
  }
  ~ShownProgress() {
    if (progress_) progress_->finish();
  }
  ShownProgress(const ShownProgress&) = delete;
  ShownProgress& operator=(const ShownProgress&) = delete;
  void at(std::int32_t day) {
    if (progress_) progress_->set_value(day);
  }

 private:
  Progress* progress_;
};

void write_days(Run& run, ShownProgress& progress) {
  std::vector<PumpDay> days;
  std::unique_ptr<engine::Recordset> ip;
  run.procedure.step([&] { days = pump_days(run.database); });
  run.procedure.step([&] { ip = run.database.open_recordset("ip"); });
  if (!ip) return;
  std::int32_t number = 0;
  for (const PumpDay& day : days) {
    end_if_interrupted(run.environment.progress);
    run.procedure.step([&] { append_pump_day(*ip, day); });
    progress.at(++number);
  }
}

}  // namespace

void convert_pump_data(Run& run, const Action&, std::string_view) {
  support::Procedure& procedure = run.procedure;
  std::int32_t days = 0;
  procedure.step([&] { days = count_days(run.database); });
  run.passed_over = !may_convert(run.environment, days);
  if (run.passed_over) return;
  ShownProgress progress{run.environment, days};
  procedure.step([&] { run.database.execute("Delete * from ip"); });
  procedure.step([&] { run.database.execute("UPDATE INSULINPUMP set [desc]=str(val(desc)*60) WHERE desc<>''"); });
  write_days(run, progress);
  run.pump_data_converted = true;
}

void create_after_conversion(Run& run, const Action&, std::string_view table) {
  run.passed_over = !run.pump_data_converted;
  if (!run.passed_over) database::create_table(run.environment, run.database, table);
}

}  // namespace database::upgrade
