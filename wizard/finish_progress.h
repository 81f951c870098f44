// The finish as its user sees it: one text for all of it. What a single step of it shows meanwhile stands below that
// text.
#pragma once

#include <string>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

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

}  // namespace wizard
