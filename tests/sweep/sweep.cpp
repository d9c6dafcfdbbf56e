// Each single thing that may fail around the module fails, in every dialog and mode (see faults.h).
//
//     sweep MODULE [--share N] [--lot K] [--case KEY]
//
// --share N plays one in N cases, always the same ones: those of lot K, 0 to N - 1. The cases are played by a
// process of their own, which is started again behind the one that ends or hangs it. Prints what is wrong and
// a table of counts; ends with 1 when something is.

#include "sweep/session.h"

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

constexpr int kMostScenarios = 16;
// A process plays so many cases and ends with this code: records at the end of memory use up its addresses.
constexpr int kCasesOfAProcess = 100;
constexpr DWORD kGoesOn = 6;

// Lies in memory that both processes see.
struct Progress {
    long at;  // the case that is being played, or was played last
    int scenario;
    Fault fault;
    int scenarios;  // that were recorded: how many cases stand before each, and its sites
    long before[kMostScenarios + 1];
    unsigned sites[kSites];
    struct {
        unsigned cases, happened, wrong;
    } counts[kSites][kKinds];
};

constexpr const char* kSiteNames[] = {"host call", "message box", "allocation", "resource"};
constexpr const char* kKindNames[] = {"null, empty, refused", "nulls in lists", "full-width texts",
                                      "parent destroyed",     "dialog closed",  "closed and opened",
                                      "events of a thread"};

// "4.0.36.3.1", as --case takes it.
std::string Key(int scenario, const Fault& fault) {
    std::string key = std::to_string(scenario);
    for (const unsigned part : {static_cast<unsigned>(fault.site), fault.number,
                                static_cast<unsigned>(fault.kind), static_cast<unsigned>(fault.forEver)}) {
        key += "." + std::to_string(part);
    }
    return key;
}

// Spreads the cases evenly, the same ones in every run.
unsigned long Lot(int scenario, const Fault& fault) {
    unsigned long lot = 2166136261u;
    for (const char character : Key(scenario, fault)) {
        lot = (lot ^ static_cast<unsigned char>(character)) * 16777619u;
    }
    return lot >> 4;
}

void Say(const Progress& progress, const char* what) {
    const Fault& fault = progress.fault;
    std::printf("case %s: %s, %s %u %s, %s %s\n%s", Key(progress.scenario, fault).c_str(),
                Scenarios()[progress.scenario].name, kSiteNames[static_cast<int>(fault.site)], fault.number,
                g_faults.where.c_str(), kKindNames[static_cast<int>(fault.kind)],
                fault.forEver ? "from then on" : "once", what);
    std::fflush(stdout);
}

LONG CALLBACK SayWhereItEnds(EXCEPTION_POINTERS* raised) {
    HMODULE module = nullptr;
    char name[MAX_PATH] = "";
    void* const address = raised->ExceptionRecord->ExceptionAddress;
    std::printf("    after %s\n", g_faults.where.c_str());
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(address), &module);
    GetModuleFileNameA(module, name, sizeof name);
    std::printf("    exception %lx at %s+%x\n", raised->ExceptionRecord->ExceptionCode, name,
                static_cast<char*>(address) - reinterpret_cast<char*>(module));
    std::fflush(stdout);
    ExitProcess(3);
}

// Nothing but what the undisturbed run sends. What the host did not answer may be missing in it, and what it
// filled up may be longer.
bool IsConfirmed(const std::vector<FaultyServer::Sent>& some, const std::vector<FaultyServer::Sent>& all,
                 const Fault& fault) {
    const bool answers = fault.site == Site::Call;
    const auto isSame = [&](char sent, char ordinary) {
        return sent == ordinary ||
               (answers && sent == (fault.kind == Kind::Wide ? 'W' : '\0') && fault.kind <= Kind::Wide);
    };
    return some.size() <= all.size() && std::all_of(some.begin(), some.end(), [&](const auto& sent) {
               return std::any_of(all.begin(), all.end(), [&](const auto& ordinary) {
                   return sent.what == ordinary.what &&
                          std::equal(sent.bytes.begin(), sent.bytes.end(), ordinary.bytes.begin(), isSame);
               });
           });
}

class Sweep {
public:
    Sweep(const std::string& module, Progress& progress, unsigned long share, unsigned long lot,
          std::string only)
        : m_session(module), m_progress(progress), m_share(share), m_lot(lot), m_only(std::move(only)) {}

    // Plays the cases behind the last one.
    void Run() {
        const long from = m_progress.at;
        const auto& scenarios = Scenarios();
        // What is played after each: the shortest that sends.
        const Scenario* next[2] = {&scenarios[2], &scenarios.back()};
        std::optional<Outcome> afterwards[2];
        for (int number = 0; number < static_cast<int>(scenarios.size()); ++number) {
            const bool isOther = !m_only.empty() && std::atoi(m_only.c_str()) != number;
            if (isOther || (number + 1 < m_progress.scenarios && m_progress.before[number + 1] <= from)) {
                continue;
            }
            const Scenario& scenario = scenarios[static_cast<std::size_t>(number)];
            auto& after = afterwards[scenario.opening.fillDialog];
            if (!after) {
                after = m_session.Play(*next[scenario.opening.fillDialog], nullptr, nullptr,
                                       {*next[scenario.opening.fillDialog], nullptr});
            }
            m_progress.scenario = number;
            const Session::Next then{*next[scenario.opening.fillDialog], &*after};
            m_session.Play(scenario, nullptr, nullptr, then);  // what the system makes once and keeps
            const Outcome ordinary = m_session.Play(scenario, nullptr, nullptr, then);
            Record(number, ordinary);
            m_case = m_progress.before[number];
            ForEachFault(ordinary, [&](const Fault& fault) {
                ++m_case;
                if (m_case > from &&
                    (m_only.empty() ? Lot(number, fault) % m_share == m_lot : m_only == Key(number, fault))) {
                    PlayCase(scenario, fault, ordinary, then);
                    if (++m_played == kCasesOfAProcess) {
                        std::fflush(stdout);
                        ExitProcess(kGoesOn);
                    }
                }
            });
        }
    }

private:
    template <typename Use>
    static void ForEachFault(const Outcome& ordinary, Use use) {
        for (int site = 0; site < kSites; ++site) {
            const std::string& letters = ordinary.sites[site];
            for (unsigned number = 1; number <= letters.size(); ++number) {
                for (int kind = 0; kind < kKinds; ++kind) {
                    if (Faults::Offers(letters[number - 1], static_cast<Kind>(kind))) {
                        use({static_cast<Site>(site), number, static_cast<Kind>(kind), false});
                        use({static_cast<Site>(site), number, static_cast<Kind>(kind), true});
                    }
                }
            }
        }
    }

    void Record(int number, const Outcome& ordinary) {
        if (number < m_progress.scenarios) {
            return;
        }
        long cases = m_progress.before[number];
        ForEachFault(ordinary, [&](const Fault&) { ++cases; });
        m_progress.before[number + 1] = cases;
        m_progress.scenarios = number + 1;
        std::printf("%s:", Scenarios()[static_cast<std::size_t>(number)].name);
        for (int site = 0; site < kSites; ++site) {
            m_progress.sites[site] += ordinary.sites[site].size();
            std::printf(" %u %s,", static_cast<unsigned>(ordinary.sites[site].size()), kSiteNames[site]);
        }
        for (const FaultyServer::Sent& sent : ordinary.sent) {
            std::printf(" %s", sent.what.c_str());
        }
        std::printf("\n%s", ordinary.failure.c_str());
        if (!ordinary.failure.empty()) {
            ExitProcess(4);
        }
    }

    void PlayCase(const Scenario& scenario, const Fault& fault, const Outcome& ordinary,
                  const Session::Next& next) {
        m_progress.at = m_case;
        m_progress.fault = fault;
        auto& counts = m_progress.counts[static_cast<int>(fault.site)][static_cast<int>(fault.kind)];
        ++counts.cases;
        ++counts.wrong;  // unless it comes back
        Outcome outcome = m_session.Play(scenario, &fault, &ordinary, next);
        if (outcome.gdiObjects != ordinary.gdiObjects) {
            // What the system makes at its first use and keeps is not made again.
            outcome = m_session.Play(scenario, &fault, &ordinary, next);
        }
        counts.happened += outcome.happened > 0;
        const bool asSent = IsConfirmed(outcome.sent, ordinary.sent, fault);
        const std::string failure = outcome.failure + (asSent ? "" : "    something else is sent\n");
        if (failure.empty()) {
            --counts.wrong;
        } else {
            Say(m_progress, failure.c_str());
        }
    }

    Session m_session;
    Progress& m_progress;
    const unsigned long m_share;
    const unsigned long m_lot;
    const std::string m_only;
    long m_case = 0;
    int m_played = 0;
};

// Starts this program again to play, and watches it. Returns how it ended.
DWORD RunChild(HANDLE memory, const Progress& progress) {
    constexpr ULONGLONG kPatience = 60'000;  // for one case
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION child{};
    std::string line = std::string(GetCommandLineA()) + " --progress " +
                       std::to_string(reinterpret_cast<std::uintptr_t>(memory));
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &child)) {
        return 4;
    }
    long at = progress.at;
    for (ULONGLONG since = GetTickCount64(); WaitForSingleObject(child.hProcess, 500) == WAIT_TIMEOUT;) {
        if (at != progress.at) {
            at = progress.at;
            since = GetTickCount64();
        } else if (GetTickCount64() - since > kPatience) {
            Say(progress, "    hangs\n");
            TerminateProcess(child.hProcess, 5);
        }
    }
    DWORD ended = 0;
    GetExitCodeProcess(child.hProcess, &ended);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
    return ended;
}

int PrintTable(const Progress& progress) {
    unsigned wrong = 0;
    std::printf("%-12s %7s  %-22s %7s %9s %9s\n", "where", "sites", "what", "cases", "happened", "survived");
    for (int site = 0; site < kSites; ++site) {
        for (int kind = 0; kind < kKinds; ++kind) {
            const auto& counts = progress.counts[site][kind];
            wrong += counts.wrong;
            if (counts.cases) {
                std::printf("%-12s %7u  %-22s %7u %9u %9u\n", kSiteNames[site], progress.sites[site],
                            kKindNames[kind], counts.cases, counts.happened, counts.cases - counts.wrong);
            }
        }
    }
    return wrong > 0;
}

}  // namespace

int main(int count, char** arguments) {
    unsigned long share = 1;
    unsigned long lot = 0;
    std::string only;
    std::uintptr_t memory = 0;
    for (int i = 2; i + 1 < count; i += 2) {
        const std::string option = arguments[i];
        const unsigned long value = std::strtoul(arguments[i + 1], nullptr, 10);
        share = option == "--share" && value ? value : share;
        lot = option == "--lot" ? value : lot;
        only = option == "--case" ? arguments[i + 1] : only;
        memory = option == "--progress" ? value : memory;
    }
    if (count < 2) {
        std::printf("usage: sweep MODULE [--share N] [--lot K] [--case KEY]\n");
        return 2;
    }
    if (memory) {
        InitCommonControls();  // the first use of them, which makes the linker keep them
        SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
        SetUnhandledExceptionFilter(&SayWhereItEnds);
        void* view = MapViewOfFile(reinterpret_cast<HANDLE>(memory), FILE_MAP_ALL_ACCESS, 0, 0, 0);
        Sweep(arguments[1], *static_cast<Progress*>(view), share, lot, only).Run();
        return 0;
    }
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE shared =
        CreateFileMappingA(INVALID_HANDLE_VALUE, &inherited, PAGE_READWRITE, 0, sizeof(Progress), nullptr);
    auto& progress = *static_cast<Progress*>(MapViewOfFile(shared, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    const ULONGLONG began = GetTickCount64();
    for (long last = -1;;) {
        const DWORD ended = RunChild(shared, progress);
        if (ended == 0) {
            break;
        }
        if (ended == kGoesOn) {
            continue;
        }
        std::printf("the process ended with %lu\n", ended);
        if (progress.at == last) {
            return 1;  // outside of any case
        }
        last = progress.at;
        Say(progress, "    ended the process\n");
    }
    std::printf("%ld cases in all, %llu s\n", progress.before[progress.scenarios],
                (GetTickCount64() - began) / 1000);
    return PrintTable(progress);
}
