#include "apps/firststeps_batch/firststeps_batch.h"

int console::program(const std::vector<std::string>& arguments, Console& console) {
  return firststeps_batch::run(arguments, console);
}
