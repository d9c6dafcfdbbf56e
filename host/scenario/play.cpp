#include "scenario/play.h"

#include "book/book_file.h"
#include "book/host_text.h"
#include "scenario/picture.h"
#include "scenario/player.h"
#include "services/explain.h"

#include <atomic>
#include <cstdio>

namespace {

constexpr DWORD kStepLimit = 30'000;
constexpr unsigned kSlowPause = 600;

// Ends the program when a step hangs, which nothing on the user-interface thread could do.
class StepLimit {
public:
    StepLimit(const std::string& file, std::string picture)
        : m_file(file),
          m_picture(std::move(picture)),
          m_wake(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
          m_thread(CreateThread(nullptr, 0, &StepLimit::Watch, this, 0, nullptr)) {}
    ~StepLimit() {
        m_ended = true;
        SetEvent(m_wake);
        WaitForSingleObject(m_thread, INFINITE);
        CloseHandle(m_thread);
        CloseHandle(m_wake);
    }
    StepLimit(const StepLimit&) = delete;
    StepLimit& operator=(const StepLimit&) = delete;

    void Begin(const Step& step) {
        m_line = step.line;
        SetEvent(m_wake);
    }

private:
    static DWORD WINAPI Watch(void* data) {
        auto* self = static_cast<StepLimit*>(data);
        while (WaitForSingleObject(self->m_wake, kStepLimit) == WAIT_OBJECT_0) {
            if (self->m_ended) {
                return 0;
            }
        }
        std::printf("FAILED %s:%d: the step did not end within %u s\n", self->m_file.c_str(), +self->m_line,
                    static_cast<unsigned>(kStepLimit / 1000));
        std::fflush(stdout);
        if (!self->m_picture.empty()) {
            SavePicture(nullptr, self->m_picture);
        }
        TerminateProcess(GetCurrentProcess(), 1);
        return 1;
    }

    std::string m_file;
    std::string m_picture;
    std::atomic<int> m_line = 0;
    std::atomic<bool> m_ended = false;
    HANDLE m_wake;
    HANDLE m_thread;
};

std::string Content(const std::string& path) {
    const std::optional<std::string> content = ReadWholeFile(path);
    if (!content) {
        throw std::runtime_error(path + ": cannot be read");
    }
    return *content;
}

// "host/scenarios/demo.scn" -> "demo"
std::string NameOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
    return file.substr(0, file.rfind('.'));
}

std::string JournalPath(const PlayOptions& options) {
    return options.out + "/journal.jsonl";
}

void PrintRequest(const std::string& line) {
    const Json request = Json::parse(line);
    std::printf("%s", Explain({"journal", line, std::nullopt}).c_str());
    if (request.contains("bytes")) {
        std::printf("  bytes %s\n", request["bytes"].get_ref<const std::string&>().c_str());
    }
    std::fflush(stdout);
}

// Empty when all went well.
std::string PlayOne(const std::string& file, const PlayOptions& options) {
    const std::string name = NameOf(file);
    const std::unique_ptr<Book> book = ReadBookFile(options.book);
    HostApp host(*book);
    Journal& journal = host.Services().journal;
    if (!options.out.empty()) {
        const std::string path = JournalPath(options);
        if (!journal.Open(path)) {
            throw std::runtime_error(path + ": cannot be written");
        }
    }
    journal.onLine = PrintRequest;
    host.Load(options.module, options.language);
    const std::string picture = options.out.empty() ? ""
                                                    : options.out + "/failed-" + name + '-' +
                                                          std::to_string(options.language) + ".bmp";
    try {
        const Script script = ReadScript(Content(file), file);
        StepLimit limit(file, picture);
        PlayerSettings settings{options.language, options.out, name, options.slow ? kSlowPause : 0,
                                [&](const Step& step) { limit.Begin(step); }};
        return Player(script, host, std::move(settings)).Play();
    } catch (const ScenarioError& error) {
        const bool taken = !picture.empty() && SavePicture(nullptr, picture);
        return error.what() + (taken ? "\n  picture: " + picture : "");
    }
}

}  // namespace

int PlayScenarios(const PlayOptions& options) {
    if (!options.out.empty()) {
        std::remove(JournalPath(options).c_str());
    }
    int failures = 0;
    for (const std::string& file : options.scenarios) {
        std::printf("%s\n", file.c_str());
        const std::string failure = PlayOne(file, options);
        failures += !failure.empty();
        std::printf("%s\n", failure.empty() ? ("PASSED " + file).c_str() : ("FAILED " + failure).c_str());
        std::fflush(stdout);
    }
    return failures ? 1 : 0;
}
