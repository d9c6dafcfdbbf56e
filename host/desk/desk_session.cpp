#include "desk/desk_session.h"

#include "app/language_choice.h"

#include "book/book_file.h"
#include "book/host_text.h"
#include "services/wide_text.h"
#include "services/wording.h"

#include <stdexcept>

namespace {

void SaveBook(const Book& book, const std::string& path) {
    for (;;) {
        try {
            WriteBookFile(book, path);
            return;
        } catch (const BookFileError& error) {
            const std::wstring text = Wide(Say("The book was not saved: %1", {Utf8FromAnsi(error.what())}));
            if (MessageBoxW(nullptr, text.c_str(), Wide(Say("Emendo desk")).c_str(),
                            MB_RETRYCANCEL | MB_ICONERROR) != IDRETRY) {
                throw;
            }
        }
    }
}

}  // namespace

void RunDesk(HostApp& host, const DeskOptions& options, const std::function<void(DeskWindow& desk)>& ready) {
    if (!CanShow(options.language)) {
        throw std::runtime_error("this system has no characters for language " +
                                 std::to_string(options.language));
    }
    DeskWindow desk(host, options.bookPath,
                    options.settingsPath.empty() ? DeskSettings{} : ReadDeskSettings(options.settingsPath));
    host.Load(options.modulePath, options.language);
    desk.Show(options.language);
    if (ready) {
        ready(desk);
    }
    desk.Run();
    host.Unload();
    if (!options.settingsPath.empty()) {
        WriteDeskSettings(desk.Settings(), options.settingsPath);  // a layout is not worth a question
    }
    if (!desk.BookPath().empty()) {
        SaveBook(host.TheBook(), desk.BookPath());
    }
}

std::string DeskSettingsPath() {
    char folder[MAX_PATH];
    const DWORD length = GetEnvironmentVariableA("APPDATA", folder, sizeof folder);
    if (length == 0 || length >= sizeof folder) {
        return {};
    }
    const std::string place = std::string(folder) + "\\Emendo";
    CreateDirectoryA(place.c_str(), nullptr);  // normally there
    return place + "\\desk.json";
}
