// The finish: the choices are written, in a fixed order, each thing whether or not those before it could be written.
#pragma once

#include <string>
#include <string_view>

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finish_writer.h"

namespace wizard {

/// The finish as its user sees it: one text for all of it, and below that what a single step of it shows meanwhile.
/// Stands in for the context's progress, from the start of the finish to its end.
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

/// Writes the configuration and the patient's database, or in a preview only records what would be written. Where a
/// database is created, writing sets `CurrentDB`. The report tells of failures.
FinishReport apply_configuration(Context& context, const Choices& choices, FinishWriter::Mode mode);

}  // namespace wizard
