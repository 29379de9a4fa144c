#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kortavin::odbc {

// Keeps what a connection string holds in confidence out of every text that leaves this layer: the values of
// PWD, PASSWORD and their like. Drivers do quote connection strings in their messages.
class SecretFilter {
  public:
    SecretFilter() = default;
    explicit SecretFilter(std::string_view connectionString);

    // The text with every such value replaced by "***". A value of fewer than four bytes is replaced only
    // where it stands as a word of its own. The beginning of a value counts where the text ends with it.
    std::string Apply(std::string_view text) const;

  private:
    std::vector<std::string> m_secrets;  // longest first
};

}  // namespace kortavin::odbc
