// Any bytes as a hive file: an error with a number, or a hive that reads the same when it is written back.
#include "fuzz/target.h"
#include "support/error.h"
#include "support/hive_document.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::text_of(data, size);
  static_cast<void>(support::hive_text(bytes));
  static_cast<void>(support::hive_bytes(bytes));
  static_cast<void>(support::hive_number(bytes));
  if (const auto text = support::hive_text(support::hive_text_data(bytes))) {
    fuzz::promise(*text == bytes, "a text's data reads back");
  }
  std::string written;
  try {
    written = support::HiveDocument::parse(bytes, "input").bytes();
  } catch (const support::RuntimeError& error) {
    fuzz::promise(error.number() == 321, "a refused hive has its number");
    return 0;
  }
  fuzz::promise(support::HiveDocument::parse(written, "written").bytes() == written, "a written hive reads the same");
  return 0;
}
