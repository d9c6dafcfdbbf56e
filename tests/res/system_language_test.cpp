// On the settings of the system that runs it: EMENDO_EXPECTED_LANGUAGE tells which language they ask for.
#include "res/system_language.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(SystemLanguage, IsTakenOnlyWhenTheHostLeavesTheChoice) {
    const char* expected = std::getenv("EMENDO_EXPECTED_LANGUAGE");
    ASSERT_NE(expected, nullptr);
    for (int host : {0, 1028, 1033, 1036, 2052}) {
        ChooseResourceLanguage(static_cast<std::uint16_t>(host));
        EXPECT_EQ(g_wSystemLanguage, std::atoi(expected));
        EXPECT_EQ(g_wResLanguage, host == 0 ? std::atoi(expected) : host);
    }
}

}  // namespace
