#include "apps/console/interrupt.h"

#include <csignal>

namespace console {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void note(int) {
  interrupted = 1;
  std::signal(SIGINT, SIG_DFL);
}

}  // namespace

Interrupt::Interrupt() {
  interrupted = 0;
  before_ = std::signal(SIGINT, note);
}

Interrupt::~Interrupt() { std::signal(SIGINT, before_ == SIG_ERR ? SIG_DFL : before_); }

bool Interrupt::wanted() noexcept { return interrupted != 0; }

}  // namespace console
