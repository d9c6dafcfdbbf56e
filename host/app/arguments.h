#pragma once

#include <optional>
#include <string>
#include <vector>

// What the command line of EmendoHost asks for.
struct Arguments {
    std::string book;                  // empty: data\sample_book.json beside the program
    std::string module;                // empty: EmendoOrd.dll beside the program
    std::string journal;               // empty: none is written
    unsigned language = 1033;          // 2052, 1028, 1033, or 0: the module chooses
    std::vector<std::string> faults;   // as FaultPlan reads them
    std::vector<std::string> explain;  // one file to explain, or two to compare
    std::optional<std::string> record;
    std::vector<std::string> scenarios;  // files to play, one after the other
    std::string out;                     // folder for what a scenario leaves; empty: it leaves nothing
    bool slow = false;
    bool ignoreClock = false;
    bool version = false;
    bool help = false;
};

// Throws std::invalid_argument with the reason.
Arguments ReadArguments(const std::vector<std::string>& words);
extern const char kUsage[];
