#pragma once

#include <gtest/gtest.h>

#include <string>

namespace tavrin::test {

// A fixture that runs its tests with the process locale set to German, whose
// decimal separator is a comma, and restores the previous locale afterwards.
// Tests skip with a message when the locale is not installed
// (`make check-locale` generates it).
class DecimalCommaLocale : public ::testing::Test {
protected:
    static constexpr const char* kLocale = "de_DE.UTF-8";

    void SetUp() override;
    void TearDown() override;

private:
    std::string _previous;
    bool _switched = false;
};

}  // namespace tavrin::test
