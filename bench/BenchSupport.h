#pragma once

#include <cstdio>

// A bench's own checks: each failure is named on stderr, and the bench ends non-zero, so that
// a bench which no longer measures what it says fails the test run.
class Checks {
public:
    void expect(bool holds, const char* what) {
        if (holds) return;
        std::fprintf(stderr, "FAILED: %s\n", what);
        ok_ = false;
    }
    bool ok() const { return ok_; }

private:
    bool ok_ = true;
};
