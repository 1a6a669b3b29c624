#pragma once

#include <stdexcept>

namespace annotate {

/// Tells the user in a sentence why the store can't be used, and what to do.
class StoreError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace annotate
