// Marking what is under way.
#pragma once

namespace base {

/// Sets a flag for as long as it lives, however its scope is left.
class FlagSet {
public:
    explicit FlagSet(bool& flag) : flag_(flag) { flag_ = true; }
    FlagSet(const FlagSet&) = delete;
    FlagSet& operator=(const FlagSet&) = delete;
    ~FlagSet() { flag_ = false; }

private:
    bool& flag_;
};

} // namespace base
