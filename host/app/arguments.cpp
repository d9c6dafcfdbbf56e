#include "app/arguments.h"

#include <algorithm>
#include <iterator>
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
    // A value, and those behind it up to the next option, as far as `most` goes.
    const auto values = [&](std::vector<std::string>& list, std::size_t most) {
        do {
            list.push_back(value());
        } while (list.size() < most && at < words.size() && !words[at].starts_with("--"));
    };
    const std::pair<std::string_view, std::string*> texts[] = {{"--book", &arguments.book},
                                                               {"--module", &arguments.module},
                                                               {"--journal", &arguments.journal},
                                                               {"--out", &arguments.out}};
    const std::pair<std::string_view, bool*> flags[] = {{"--ignore-clock", &arguments.ignoreClock},
                                                        {"--version", &arguments.version},
                                                        {"--help", &arguments.help},
                                                        {"--slow", &arguments.slow}};
    while (at < words.size()) {
        const std::string& word = words[at++];
        const auto isWord = [&](const auto& option) { return option.first == word; };
        const auto* text = std::find_if(std::begin(texts), std::end(texts), isWord);
        const auto* flag = std::find_if(std::begin(flags), std::end(flags), isWord);
        if (text != std::end(texts)) {
            *text->second = value();
        } else if (flag != std::end(flags)) {
            *flag->second = true;
        } else if (word == "--fault") {
            arguments.faults.push_back(value());
        } else if (word == "--record") {
            arguments.record = value();
        } else if (word == "--explain") {
            values(arguments.explain, 2);
        } else if (word == "--scenario") {
            values(arguments.scenarios, words.size());
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
