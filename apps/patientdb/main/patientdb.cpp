#include "apps/patientdb/patientdb.h"

int console::program(const std::vector<std::string>& arguments, Console& console) {
  return patientdb::run(arguments, console);
}
