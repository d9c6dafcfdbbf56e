#include "app/arguments.h"
#include "app/file_version.h"
#include "book/book_file.h"
#include "book/host_text.h"
#include "desk/desk_session.h"
#include "scenario/play.h"
#include "services/explain.h"
#include "services/wide_text.h"

#include <cstdio>

#include <io.h>
#include <windows.h>

namespace {

constexpr int kDifferent = 1;
constexpr int kBadArguments = 2;
constexpr int kCannotStart = 3;

ExplainInput ReadInput(const std::string& path, const std::optional<std::string>& record) {
    const std::optional<std::string> content = ReadWholeFile(path);
    if (!content) {
        throw std::invalid_argument(path + ": cannot be read");
    }
    return {path, *content, record};
}

int RunExplain(const Arguments& arguments) {
    const ExplainInput first = ReadInput(arguments.explain[0], arguments.record);
    if (arguments.explain.size() == 1) {
        std::fputs(Explain(first).c_str(), stdout);
        return 0;
    }
    const std::string differences =
        CompareRecords(first, ReadInput(arguments.explain[1], arguments.record), arguments.ignoreClock);
    std::fputs(differences.c_str(), stdout);
    return differences.empty() ? 0 : kDifferent;
}

std::string BookPath(const Arguments& arguments) {
    return arguments.book.empty() ? ProgramFolder() + "data\\sample_book.json" : arguments.book;
}

std::string ModulePath(const Arguments& arguments) {
    return arguments.module.empty() ? ProgramFolder() + "EmendoOrd.dll" : arguments.module;
}

int RunScenarios(const Arguments& arguments) {
    if (arguments.language == 0) {
        throw std::invalid_argument("a scenario needs a language");
    }
    return PlayScenarios({arguments.scenarios, BookPath(arguments), ModulePath(arguments), arguments.out,
                          static_cast<WORD>(arguments.language), arguments.slow});
}

int PrintVersions(const Arguments& arguments) {
    const std::string module = FileVersion(ModulePath(arguments));
    std::printf("EmendoHost %s\nEmendoOrd %s\n", OwnVersion().c_str(),
                module.empty() ? "without a version" : module.c_str());
    return module.empty() ? kCannotStart : 0;
}

int OpenDesk(const Arguments& arguments) {
    const std::unique_ptr<Book> book = ReadBookFile(BookPath(arguments));
    HostApp host(*book);
    for (const std::string& fault : arguments.faults) {
        host.Services().faults.Set(fault);
    }
    if (!arguments.journal.empty() && !host.Services().journal.Open(arguments.journal)) {
        throw std::runtime_error(arguments.journal + ": cannot be written");
    }
    // The sample is for reading: only a book of one's own is written back.
    RunDesk(host, {ModulePath(arguments), arguments.book, DeskSettingsPath(),
                   static_cast<WORD>(arguments.language)});
    return 0;
}

bool IsConnected(FILE* stream) {
    return _get_osfhandle(_fileno(stream)) >= 0;
}

// A program with windows gets no console. What it prints goes to the file or pipe that it was given, else to
// the console of the shell that started it.
void FindOutput() {
    if (!IsConnected(stdout) && AttachConsole(ATTACH_PARENT_PROCESS)) {
        std::freopen("CONOUT$", "w", stdout);
        std::freopen("CONOUT$", "w", stderr);
    }
}

// Started from a desktop there is nobody to read what is printed.
void Complain(const std::string& text) {
    if (IsConnected(stderr)) {
        std::fprintf(stderr, "EmendoHost: %s\n", text.c_str());
    } else {
        MessageBoxA(nullptr, text.c_str(), "EmendoHost", MB_ICONERROR);
    }
}

}  // namespace

int main(int count, char** words) {
    FindOutput();
    ScaleByOurselves();
    try {
        const Arguments arguments = ReadArguments({words + 1, words + count});
        if (arguments.help) {
            std::fputs(kUsage, stdout);
            return 0;
        }
        if (arguments.version) {
            return PrintVersions(arguments);
        }
        if (!arguments.scenarios.empty()) {
            return RunScenarios(arguments);
        }
        return arguments.explain.empty() ? OpenDesk(arguments) : RunExplain(arguments);
    } catch (const std::invalid_argument& error) {
        Complain(std::string(error.what()) + '\n' + kUsage);
        return kBadArguments;
    } catch (const std::exception& error) {
        Complain(error.what());
        return kCannotStart;
    }
}
