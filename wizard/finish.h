// The finish: writes the choices in a fixed order. Each part is written even if an earlier one failed.
#pragma once

#include <string>
#include <string_view>

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finish_writer.h"

namespace wizard {

/// The progress of the finish as the user sees it: one text for the whole finish and, below it, the text of the current
/// step. From the start of the finish to its end, it takes the place of the context's progress.
class FinishProgress : public database::Progress {
 public:
  explicit FinishProgress(Context& context)
      : context_(context), shown_(context.ports.progress), caption_(context.config.text(saving)) {
    if (!shown_) return;
    shown_->start(caption_, 0);
    context.ports.progress = this;
  }
  ~FinishProgress() override {
    if (!shown_) return;
    context_.ports.progress = shown_;
    shown_->finish();
  }
  FinishProgress(const FinishProgress&) = delete;
  FinishProgress& operator=(const FinishProgress&) = delete;

  void start(std::string_view caption, std::int32_t) override { set_caption(caption); }
  void set_caption(std::string_view caption) override { shown_->set_caption(caption_ + "\r\n" + std::string(caption)); }
  void set_value(std::int32_t) override { at_work(); }
  void finish() override { shown_->set_caption(caption_); }
  void at_work() override { shown_->at_work(); }

 private:
  static constexpr long saving = 6052;

  Context& context_;
  database::Progress* shown_;
  std::string caption_;
};

/// Writes the configuration and the patient's database or, in a preview, only records what would be written. If it
/// creates a database, it sets `CurrentDB`. The report says what failed.
FinishReport apply_configuration(Context& context, const Choices& choices, FinishWriter::Mode mode);

}  // namespace wizard
