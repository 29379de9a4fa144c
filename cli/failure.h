#pragma once

#include <stdexcept>
#include <string>

namespace kortavin::cli {

// The data source or a file refused, or the input is damaged: exit code 1. The text is UTF-8 and says why.
class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The command line itself is wrong: exit code 2.
class UsageFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Nobody reads the output any more: exit code 1, and nobody is told.
class ClosedPipe : public std::runtime_error {
  public:
    ClosedPipe() : std::runtime_error("closed pipe") {}
};

}  // namespace kortavin::cli
