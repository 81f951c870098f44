#include "wizard/findings.h"

#include <algorithm>
#include <iterator>

#include "support/encoding.h"
#include "support/error.h"
#include "wizard/page_list.h"
#include "wizard/summary_lines.h"
#include "wizard/surroundings.h"

namespace wizard {

namespace {

constexpr long warning_mark = 4855, note_mark = 4856, field_full = 4861;

/// Windows counts what is typed in units of UTF-16.
bool is_full(const form::Control& field) {
  if (!field.editable() || field.maximum() <= 0) return false;
  return support::utf16_from_utf8(field.text()).size() >= static_cast<std::size_t>(field.maximum());
}

/// The label before a field, in the order of the form.
std::string label_of(const form::Form& form, const form::Control& field) {
  std::string label;
  for (const auto& control : form.controls()) {
    if (control.get() == &field) break;
    if (control->kind() == form::Kind::Label) label = control->caption();
  }
  return plain_caption(label);
}

/// What did not fit in was not taken when it was typed: nobody but the user knows whether there was more.
void find_full_fields(const Context& context, const Page& page, Findings& findings) {
  const form::Control& container = context.form.at("contstep", page_index(page));
  for (const TextLimit& limit : page.limits) {
    std::vector<const form::Control*> fields = context.form.array(limit.control);
    if (const form::Control* single = context.form.find(limit.control)) fields.push_back(single);
    for (const form::Control* field : fields) {
      if (field->parent() != &container || !is_full(*field)) continue;
      findings.push_back({.severity = Severity::Warning,
                          .control = field->path(),
                          .text = field_full,
                          .values = {label_of(context.form, *field), std::to_string(limit.characters)}});
    }
  }
}

}  // namespace

std::string finding_text(const InstallationConfig& config, const Finding& finding) {
  return config.text(finding.text, finding.values);
}

std::string marked_text(const InstallationConfig& config, const Finding& finding) {
  const long mark = finding.severity == Severity::Warning ? warning_mark : note_mark;
  return config.text(mark, {finding_text(config, finding)});
}

Findings page_findings(const Context& context, const Pages& pages, const Choices& choices, const Page& page) {
  Findings findings;
  support::Procedure procedure{"wizard!Findings"};
  // What is not stored is told of as such.
  if (page.patients_own && context.config.ProEdition) return findings;
  if (page.findings) procedure.step([&] { page.findings(context, pages, choices, findings); });
  procedure.step([&] { find_full_fields(context, page, findings); });
  for (Finding& finding : findings) finding.page = page.tag;
  return findings;
}

Findings all_findings(const Context& context, const Pages& pages, const Choices& choices) {
  Findings findings = surrounding_findings(context, choices);
  for (const Page* page : all_pages())
    std::ranges::move(page_findings(context, pages, choices, *page), std::back_inserter(findings));
  return findings;
}

}  // namespace wizard
