#include "app/arguments.h"

#include <stdexcept>

const char kUsage[] =
    "usage: EmendoHost [--book FILE] [--module FILE] [--lang 2052|1028|1033|0] [--journal FILE] [--fault TEXT]...\n"
    "       EmendoHost --scenario FILE... [--lang 2052|1028|1033] [--out FOLDER] [--slow] [--book FILE]\n"
    "       EmendoHost --explain FILE [--record NAME]\n"
    "       EmendoHost --explain FILE FILE [--ignore-clock]\n"
    "       EmendoHost --version [--module FILE]\n"
    "\n"
    "The first form opens the desk. --fault makes an operation fail, e.g. --fault \"SendOrder fail at 2\".\n"
    "--scenario plays operator steps, each file on a fresh book; pictures and journals go to the folder.\n"
    "--explain prints a journal or a record (raw bytes or hexadecimal) field by field; with two files it prints\n"
    "what differs and ends with 1 when something does.\n";

Arguments ReadArguments(const std::vector<std::string>& words) {
    Arguments arguments;
    std::size_t at = 0;
    const auto value = [&]() -> std::string {
        if (at >= words.size()) {
            throw std::invalid_argument(words.back() + " needs a value");
        }
        return words[at++];
    };
    while (at < words.size()) {
        const std::string& word = words[at++];
        if (word == "--book") {
            arguments.book = value();
        } else if (word == "--module") {
            arguments.module = value();
        } else if (word == "--journal") {
            arguments.journal = value();
        } else if (word == "--fault") {
            arguments.faults.push_back(value());
        } else if (word == "--record") {
            arguments.record = value();
        } else if (word == "--ignore-clock") {
            arguments.ignoreClock = true;
        } else if (word == "--version") {
            arguments.version = true;
        } else if (word == "--help") {
            arguments.help = true;
        } else if (word == "--explain") {
            arguments.explain.push_back(value());
            if (at < words.size() && !words[at].starts_with("--")) {
                arguments.explain.push_back(words[at++]);
            }
        } else if (word == "--scenario") {
            arguments.scenarios.push_back(value());
            while (at < words.size() && !words[at].starts_with("--")) {
                arguments.scenarios.push_back(words[at++]);
            }
        } else if (word == "--out") {
            arguments.out = value();
        } else if (word == "--slow") {
            arguments.slow = true;
        } else if (word == "--lang") {
            const std::string language = value();
            if (language != "2052" && language != "1028" && language != "1033" && language != "0") {
                throw std::invalid_argument("no such language: " + language);
            }
            arguments.language = static_cast<unsigned>(std::stoul(language));
        } else {
            throw std::invalid_argument("unknown option " + word);
        }
    }
    return arguments;
}
