#include "wizard/drug_page.h"

#include "support/common_code.h"

namespace wizard {

void show_drugs(Context& context, const std::array<std::string, 3>& drugs) {
  for (std::size_t n = 0; n < drugs.size(); ++n)
    context.form.at("txtMedik", static_cast<int>(n)).set_text(support::trim(drugs[n]));
}

std::array<std::string, 3> gather_drugs(const form::Form& form) {
  std::array<std::string, 3> drugs;
  for (std::size_t n = 0; n < drugs.size(); ++n)
    drugs[n] = support::trim(form.at("txtMedik", static_cast<int>(n)).text());
  return drugs;
}

}  // namespace wizard
