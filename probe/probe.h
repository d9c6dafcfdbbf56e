#pragma once

#include "probe/findings.h"
#include "trade/plugin_interface.h"

#include <memory>
#include <string>
#include <vector>

#include <windows.h>

class EventWatch;
class ITradeApi;

// All that the probe knows while it is loaded. It looks once, when the terminal first asks for a dialog, and
// listens until it is unloaded. Used on the terminal's user-interface thread.
class Probe {
public:
    Probe();
    ~Probe();
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    // The terminal called an export; `step` is its place in the start sequence.
    enum class Step { kNone, kLoad, kInit, kCreate };
    void OnStep(Step step, const char* name);
    void OnOtherVersion(const std::string& version);

    // What the terminal gave for opening a dialog.
    struct Opening {
        const char* operation;
        int mode;
        const void* record;
        int recordKind;  // kRecordKindOrder for the order dialog
        HWND parent;
    };
    // Looks at everything the first time, and at the arguments each time; writes the reports.
    void Look(const Opening& opening);
    // Writes the reports anew when something was found since.
    void Refresh();

    Findings& Found() { return m_findings; }
    const std::vector<std::string>& Scope() const { return m_scope; }
    std::string Title() const;

private:
    void CheckServices();
    void CheckData(HWND parent);
    void CheckOpening(const Opening& opening);
    void CheckOrder(const OrderRecord& order);
    void SendWhatIsAskedFor(HWND parent);
    void WriteReports();

    Findings m_findings;
    std::vector<std::string> m_scope;
    std::string m_folder;  // where the probe's file lies, with a backslash
    Step m_last = Step::kNone;
    DWORD m_thread;
    bool m_looked = false;
    std::size_t m_reported = 0;
    ITradeApi* m_registeredWith = nullptr;
    std::unique_ptr<EventWatch> m_events;
};
