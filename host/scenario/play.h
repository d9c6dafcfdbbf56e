#pragma once

#include <string>
#include <vector>

#include <windows.h>

struct PlayOptions {
    std::vector<std::string> scenarios;  // files, played one after the other, each with a fresh book
    std::string book;
    std::string module;
    std::string
        out;  // existing folder for pictures and journal.jsonl, which is begun anew; empty: neither is kept
    WORD language;  // 2052, 1028 or 1033
    bool slow;      // at a speed that a person can follow
};

// Prints each step and each request as it comes. 0 when every scenario went as it says, otherwise 1; file,
// line and reason of a failure are printed. A step that does not end in its time ends the program with 1.
int PlayScenarios(const PlayOptions& options);
