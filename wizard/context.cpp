#include "wizard/context.h"

#include <algorithm>

#include "support/encoding.h"
#include "support/text.h"

namespace wizard {

std::string typed_text(const form::Control& box) {
  return support::trim(support::first_characters(box.text(), static_cast<std::size_t>(std::max(box.maximum(), 0))));
}

database::Environment Context::environment() const {
  database::Environment environment;
  environment.password = config.DBPassword;
  environment.files = ports.files;
  environment.ini = ports.ini;
  environment.settings_file = config.Path + "setup.ini";
  environment.language = config.LanguageObject ? config.LanguageObject.get() : &support::german_texts();
  environment.now = ports.now;
  if (ports.open_engine) environment.open_engine = ports.open_engine;
  environment.readable_copy = ports.readable_copy;
  environment.message_box = [user = ports.user, title = form.caption()](std::string_view text, std::uint32_t style,
                                                                        std::string_view) {
    return user->message_box(text, style, title);
  };
  environment.beep = [user = ports.user] { user->beep(); };
  environment.rows_left = [user = ports.user, text = config.text(4883),
                           title = form.caption()](const database::RowsLeft& rows) {
    std::string message = text;
    support::replace(message, "%1", std::to_string(rows.left));
    support::replace(message, "%2", std::to_string(rows.all));
    support::replace(message, "%3", rows.table);
    support::replace(message, "%4", rows.reason);
    user->message_box(message, message_style::exclamation, title);
  };
  environment.progress = ports.progress;
  environment.data_folder = config.DataDir;
  return environment;
}

std::string Context::ini_value(std::string_view file, std::string_view section, std::string_view key,
                               std::string_view fallback) const {
  return support::ReadIni(*ports.ini, *ports.registry, config.RegKey,
                          {.section = section, .key = key, .fallback = fallback, .file = file});
}

std::string Context::user_value(std::string_view key, std::string_view name, std::string_view fallback) const {
  std::string value(fallback);
  support::ReadRegValue(*ports.registry, support::RootKey::CurrentUser, key, name, value);
  return support::trim(value);
}

void Context::show_text(form::Control& control, long number) const { control.set_caption(config.text(number)); }

int Context::message(long number, std::uint32_t style) const {
  return ports.user->message_box(config.text(number), style, form.caption());
}

}  // namespace wizard
