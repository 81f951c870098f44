// A page said no to its answers: the run ends without having written anything.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace firststeps_batch {

class PageRefused : public std::runtime_error {
 public:
  /// The messages from `first` on are what the page said.
  PageRefused(const std::string& page, const std::vector<std::string>& messages, std::size_t first)
      : std::runtime_error(text(page, messages, first)) {}

 private:
  static std::string text(const std::string& page, const std::vector<std::string>& messages, std::size_t first) {
    std::string text = "The page " + page + " refuses its answers";
    for (std::size_t i = first; i < messages.size(); ++i) text += (i == first ? ": " : " ") + messages[i];
    return text;
  }
};

}  // namespace firststeps_batch
