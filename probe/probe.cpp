#include "probe/probe.h"

#include "emendo_build.h"
#include "framework/debug_line.h"
#include "framework/format_text.h"
#include "framework/module_instance.h"
#include "probe/event_watch.h"
#include "probe/list_window_checks.h"
#include "probe/requests.h"
#include "trade/host_services.h"

#include <fstream>
#include <iterator>

namespace {

constexpr DWORD kLookingTime = 20000;  // milliseconds; a terminal that stands longer looks broken
constexpr DWORD kEventTime = 2000;

std::string OwnFolder() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(ModuleInstance(), path, MAX_PATH);
    const std::string full(path, length);
    return full.substr(0, full.find_last_of("\\/") + 1);
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool WriteFile(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    return static_cast<bool>(file.flush());
}

// Handles what is queued for the terminal, as a question of a dialog does, until `done`.
template <typename Condition>
void PumpUntil(Condition done, DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (!done() && GetTickCount() - start < milliseconds) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam));
                return;
            }
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, 20, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

}  // namespace

Probe::Probe() : m_folder(OwnFolder()), m_thread(GetCurrentThreadId()) {}

Probe::~Probe() {
    if (m_events && m_registeredWith) {
        m_registeredWith->UnregisterSpi(m_events.get());
    }
}

std::string Probe::Title() const {
    return "Emendo probe " EMENDO_VERSION " (build " EMENDO_BUILD ")";
}

void Probe::OnStep(Step step, const char* name) {
    if (step == Step::kLoad) {
        m_thread = GetCurrentThreadId();
    } else if (GetCurrentThreadId() != m_thread) {
        m_findings.Add(Kind::kOtherThread, name, "not on the thread of OnPluginLoad");
    }
    if (step != Step::kNone) {
        const bool next = static_cast<int>(step) <= static_cast<int>(m_last) + 1;
        if (!next) {
            m_findings.Add(Kind::kStartSequence, name, "called before the one that comes first");
        }
        m_last = step;
    }
}

void Probe::OnOtherVersion(const std::string& version) {
    m_findings.Add(Kind::kOtherVersion, "CreatePluginApi", "asked for version " + version);
}

void Probe::Look(const Opening& opening) {
    CheckOpening(opening);
    if (!m_looked) {
        m_looked = true;
        CheckServices();
        CheckData(opening.parent);
        SendWhatIsAskedFor(opening.parent);
    }
    WriteReports();
}

void Probe::CheckServices() {
    const std::tuple<const void*, const char*, Kind> services[] = {
        {g_pTradeService, "TradeApi 1.0.0.1", Kind::kMissingService},
        {g_pTradeList, "TradeList 1.0.0.1", Kind::kMissingService},
        {g_hostServices.sysConfig, "SysConfig 9.0.3.1", Kind::kNoServerConfigurations},
        {g_hostServices.quoteDataCenter, "QuoteDataCenter 1.0.0.1", Kind::kUnusedServiceMissing},
        {g_hostServices.abnormal, "Abnormal 9.0.3.1", Kind::kUnusedServiceMissing},
        {g_hostServices.auxiInsertOrder, "AuxiInsertOrder 9.0.3.1", Kind::kUnusedServiceMissing},
        {g_hostServices.batchOrder, "BatchOrder 1.0.0.1", Kind::kUnusedServiceMissing},
        {g_hostServices.globalMonitor, "GlobalMonitor 9.0.3.1", Kind::kUnusedServiceMissing},
    };
    for (const auto& [service, name, kind] : services) {
        if (!service) {
            m_findings.Add(kind, "GetPlugin", name);
        }
    }
    if (g_pTradeService && !g_pTradeApi) {
        m_findings.Add(Kind::kNoTradeInterface, "GetTradeApi", "null");
    }
}

void Probe::CheckData(HWND parent) {
    CallWatch watch(m_findings, parent);
    PositionFilterRecord filter{};
    if (g_pTradeApi) {
        WatchedTradeApi api(*g_pTradeApi, watch);
        const Subject subject{m_findings, api, TradeData(&api, g_hostServices.sysConfig),
                              GetTickCount() + kLookingTime};
        m_scope.push_back(CheckAccounts(subject, g_hostServices.sysConfig));
        m_scope.push_back(CheckCodedLists(subject));
        m_scope.push_back(CheckContracts(subject));
        m_scope.push_back(CheckPositions(subject));
        for (const PositionRecord* position : subject.data.Positions("")) {
            filter.accountNo = position->accountNo;
        }
        m_events = std::make_unique<EventWatch>(m_findings);
        api.RegisterSpi(m_events.get());
        m_registeredWith = g_pTradeApi;
    }
    if (g_pTradeList) {
        CheckListWindow(*g_pTradeList, filter, watch);
        m_scope.emplace_back("a list window of positions");
    }
}

void Probe::CheckOrder(const OrderRecord& order) {
    CheckLegTexts(m_findings, order.key, "OrderRecord.key");
    CheckText(m_findings, order.accountNo, Text::kCode, "OrderRecord.accountNo");
    CheckText(m_findings, order.systemNo, Text::kCodeOrEmpty, "OrderRecord.systemNo");
    CheckText(m_findings, order.upperNo, Text::kCodeOrEmpty, "OrderRecord.upperNo");
    if (!g_pTradeApi) {
        return;
    }
    CallWatch watch(m_findings, nullptr);
    WatchedTradeApi api(*g_pTradeApi, watch);
    const OrderRecord* found = api.GetOrder(order.orderNo);
    if (!found) {
        m_findings.Add(Kind::kNotFoundAgain, "GetOrder", FormatText("order %u", order.orderNo));
    } else {
        CheckText(m_findings, found->accountNo, Text::kCode, "GetOrder: OrderRecord.accountNo");
    }
}

void Probe::CheckOpening(const Opening& opening) {
    if (!IsWindow(opening.parent)) {
        m_findings.Add(Kind::kNoParent, opening.operation, "the parent is no window");
    } else if (GetWindowThreadProcessId(opening.parent, nullptr) != GetCurrentThreadId()) {
        m_findings.Add(Kind::kOtherThread, opening.operation, "the parent window is of another thread");
    }
    const bool order = std::string(opening.operation) == "OpenOrderDialog";
    const bool needsRecord = order && opening.mode >= 2 && opening.mode <= 4;
    if (order && (opening.mode < 0 || opening.mode > 5)) {
        m_findings.Add(Kind::kBadOpening, opening.operation, FormatText("mode %d", opening.mode));
    }
    const bool isOrder = opening.recordKind == kRecordKindOrder;
    const bool isFill = opening.recordKind == kRecordKindFill;
    if (!opening.record) {
        if (needsRecord) {
            m_findings.Add(Kind::kBadOpening, opening.operation,
                           FormatText("mode %d without a record", opening.mode));
        }
    } else if (!Readable(opening.record, isOrder ? sizeof(OrderRecord) : isFill ? sizeof(FillRecord) : 0)) {
        m_findings.Add(Kind::kUnreadableRecord, opening.operation, "the record is no readable memory");
    } else if (isOrder && static_cast<const OrderRecord*>(opening.record)->orderNo != 0) {
        CheckOrder(*static_cast<const OrderRecord*>(opening.record));
    } else if (isFill) {
        const auto& fill = *static_cast<const FillRecord*>(opening.record);
        CheckLegTexts(m_findings, fill.key, "FillRecord.key");
        CheckText(m_findings, fill.fillNo, Text::kCode, "FillRecord.fillNo");
        CheckText(m_findings, fill.accountNo, Text::kCode, "FillRecord.accountNo");
    }
}

void Probe::SendWhatIsAskedFor(HWND parent) {
    const std::string text = ReadFile(m_folder + "EmendoProbe.send");
    if (text.empty() || !g_pTradeService) {
        m_scope.emplace_back("no request was sent");
        return;
    }
    CallWatch watch(m_findings, parent);
    std::vector<Request> requests = ReadRequests(text, m_findings);
    SendRequests(requests, CurrentTradeRequests(), CurrentTradeData(), watch);
    m_scope.push_back(FormatText("%u requests of EmendoProbe.send", static_cast<unsigned>(requests.size())));
    bool fillSent = false;
    for (const Request& request : requests) {
        fillSent = fillSent || request.operation == "SendFill";
    }
    if (fillSent && m_events && !m_findings.Has(Kind::kRequestRefused)) {
        PumpUntil([&] { return m_events->Positions() > 0; }, kEventTime);
        if (m_events->Positions() == 0) {
            m_findings.Add(Kind::kNoEvent, "RegisterSpi", "no changed position within 2 s after a fill");
        }
    }
}

void Probe::Refresh() {
    if (m_events) {
        m_events->NoteDirectCalls();
    }
    if (m_findings.Total() != m_reported) {
        WriteReports();
    }
}

void Probe::WriteReports() {
    m_reported = m_findings.Total();
    const bool written = WriteFile(m_folder + "EmendoProbe.txt", TextReport(m_findings, Title(), m_scope)) &&
                         WriteFile(m_folder + "EmendoProbe.json", JsonReport(m_findings, Title(), m_scope));
    if (!written) {
        TellDebugger("the probe's reports cannot be written beside it");
    }
}
