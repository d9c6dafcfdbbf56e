// Every control by itself with sample data, for people to try and for pictures:
//   scripts/wine.sh --display virtual --locale zh_CN.UTF-8 build/windows/bin/controls_gallery.exe --lang 2052
// Options:
//   --lang 2052|1028|1033   language of the code words and the sample (default 1033)
//   --open popup|list|box   opens the contract popup, the list of exchanges or the message box at the start
//   --screenshot FILE       saves a picture of the screen as a BMP file and ends

#include "controls/dialog_keys.h"
#include "controls/message_box.h"
#include "controls/sele_code_wnd.h"
#include "controls/window_placement.h"
#include "controls/x_combo_box.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "scenario/picture.h"
#include "tests/controls/control_dialog.h"
#include "tests/entry/sample_contracts.h"
#include "trade/code_tables.h"

#include <cstdlib>

namespace {

enum Id {
    kExchange = 100,
    kDirection,
    kAccount,
    kContract,
    kPick,
    kWhole,
    kSpin,
    kPlus,
    kNumerator,
    kSlash,
    kDenominator,
    kQty,
    kQtySpin,
    kFee,
    kConfirm,
    kCancel
};

// The sample's words by language: simplified Chinese, traditional Chinese, English.
struct Words {
    std::uint16_t language;
    std::vector<const wchar_t*> labels;
    std::vector<const wchar_t*> exchanges;
    const wchar_t* metal;
    const wchar_t* copper;
    const wchar_t* question;
};

const Words kWords[] = {
    {kSimplifiedChinese,
     {L"交易所", L"买卖", L"资金帐号", L"合约", L"委托价", L"委托量", L"手续费"},
     {L"SHFE 上海期货交易所", L"DCE 大连商品交易所", L"SGX 新加坡交易所", L"LME 伦敦金属交易所",
      L"期货 中金所"},
     L"伦敦金属交易所",
     L"铜",
     L"委托不是由后台录入的，是否继续？"},
    {kTraditionalChinese,
     {L"交易所", L"買賣", L"資金帳號", L"合約", L"委託價", L"委託量", L"手續費"},
     {L"SHFE 上海期貨交易所", L"DCE 大連商品交易所", L"SGX 新加坡交易所", L"LME 倫敦金屬交易所",
      L"期貨 中金所"},
     L"倫敦金屬交易所",
     L"銅",
     L"委託不是由後台錄入的，是否繼續？"},
    {kEnglish,
     {L"Exchange", L"Direct", L"User", L"Contract", L"Order price", L"Order qty", L"Fee"},
     {L"SHFE Shanghai Futures Exchange", L"DCE Dalian Commodity Exchange", L"SGX Singapore Exchange",
      L"LME London Metal Exchange"},
     L"London Metal Exchange",
     L"Copper",
     L"The order was not input here. Go on?"},
};

std::string Ansi(const std::wstring& text) {
    std::string ansi(text.size() * 2, '\0');
    const int length = ::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                             ansi.data(), static_cast<int>(ansi.size()), nullptr, nullptr);
    ansi.resize(static_cast<std::size_t>(length));
    return ansi;
}

SampleContracts& Book() {
    static SampleContracts book;
    return book;
}

TradeData BookTrade() {
    return TradeData(&Book().api);
}

void FillBook(const Words& words) {
    SampleContracts& book = Book();
    book.api.signEntries.push_back(&book);
    book.AddUsualBook();
    book.AddExchange("LME", Ansi(words.metal).c_str(), true);
    book.AddCommodity('F', "CA", Ansi(words.copper).c_str()).tickNumerator = 1;
    for (int month = 1; month <= 12; ++month) {
        book.AddContract("26" + std::to_string(100 + month).substr(1));
    }
    CommodityRecord& option = book.AddCommodity('O', "CAO", Ansi(words.copper).c_str(), "CA");
    option.tickDenominator = 1;
    for (int strike = 9000; strike <= 9500; strike += 50) {
        book.AddContract("2603 C" + std::to_string(strike));
    }
}

// A commodity quoted in eighths.
class EighthsContext final : public INumericContext {
public:
    EighthsContext() {
        m_commodity.tickNumerator = 1;
        m_commodity.tickDenominator = 8;
        m_commodity.commodityType = 'F';
        m_api.commodities.push_back(&m_commodity);
    }
    CommodityKey Commodity() const override { return CommodityOf(m_commodity); }
    TradeData Trade() const override { return TradeData(&m_api); }
    std::string FormatPrice(double price) const override { return std::to_string(price); }

private:
    CommodityRecord m_commodity{};
    mutable FakeTradeApi m_api;
};

constexpr NumericRow kRows[] = {
    {.edit = kWhole, .spin = kSpin, .numerator = kNumerator},
    {.edit = kQty, .spin = kQtySpin},
};
constexpr NumericTable kTable{kRows, kFee, TextRuleScope::ChangedEdit};

class Gallery : public ControlDialog {
public:
    explicit Gallery(const Words& words) : m_words(words), m_popup(&BookTrade) {
        ::SetWindowPos(m_hWnd, nullptr, 40, 40, 420, 320, SWP_NOZORDER);
        ::SetWindowTextA(m_hWnd, "Controls");
        AddControls();
        Fill();
        translate = [this](MSG& message) { return Translate(message); };
        notify = [this](const NMHDR& header, LRESULT& result) {
            const bool spin = header.code == static_cast<UINT>(UDN_DELTAPOS);
            result = spin ? m_numbers.OnSpin(&header) : result;
            return spin;
        };
        onCommand = [this](WPARAM wParam, LPARAM) { React(LOWORD(wParam), HIWORD(wParam)); };
    }
    // After the window is shown.
    void Open(const std::string& what) {
        if (what == "popup") {
            OpenPopup();
        } else if (what == "list") {
            m_exchange.ShowDropDown();
        } else if (what == "box") {
            PostMessage(WM_COMMAND, MAKEWPARAM(kConfirm, BN_CLICKED),
                        reinterpret_cast<LPARAM>(GetDlgItem(kConfirm)));
        }
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_SELECTCODE) {
            SetDlgItemText(kContract, reinterpret_cast<const char*>(wParam));
            return 0;
        }
        if (message == WM_CLOSE) {
            ::PostQuitMessage(0);
            return 0;
        }
        return ControlDialog::WindowProc(message, wParam, lParam);
    }

private:
    void AddControls() {
        constexpr int kField = 110;
        int top = 12;
        for (const wchar_t* label : m_words.labels) {
            const HWND text = Add("STATIC", 0, -1, {12, top + 3, kField, top + 22});
            ::SetWindowTextA(text, Ansi(label).c_str());
            top += 32;
        }
        constexpr DWORD kCombo = CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL;
        const DWORD edit = ES_AUTOHSCROLL | WS_BORDER;
        Add("COMBOBOX", kCombo, kExchange, {kField, 12, 260, 60});
        Add("COMBOBOX", kCombo, kDirection, {kField, 44, 260, 90});
        Add("COMBOBOX", kCombo, kAccount, {kField, 76, 260, 120});
        Add("EDIT", edit, kContract, {kField, 108, 240, 128});
        ::SetWindowTextA(Add("BUTTON", 0, kPick, {242, 108, 260, 128}), "...");
        Add("EDIT", edit, kWhole, {kField, 140, 170, 160});
        Add(UPDOWN_CLASSA, 0, kSpin, {170, 140, 184, 160});
        ::SetWindowTextA(Add("STATIC", 0, kPlus, {188, 142, 198, 160}), "+");
        Add("EDIT", edit, kNumerator, {200, 140, 230, 160});
        ::SetWindowTextA(Add("STATIC", 0, kSlash, {234, 142, 240, 160}), "/");
        ::SetWindowTextA(Add("STATIC", 0, kDenominator, {244, 142, 260, 160}), "8");
        Add("EDIT", edit, kQty, {kField, 172, 170, 192});
        Add(UPDOWN_CLASSA, 0, kQtySpin, {170, 172, 184, 192});
        Add("EDIT", edit, kFee, {kField, 204, 184, 224});
        ::SetWindowTextA(Add("BUTTON", 0, kConfirm, {110, 240, 180, 264}), ResText(IDS_OK).c_str());
        ::SetWindowTextA(Add("BUTTON", 0, kCancel, {190, 240, 260, 264}), "Cancel");
        m_numbers.Attach(m_hWnd);
    }
    void Fill() {
        m_exchange.SubclassDlgItem(kExchange, m_hWnd);
        m_direction.SubclassDlgItem(kDirection, m_hWnd);
        m_account.SubclassDlgItem(kAccount, m_hWnd);
        std::vector<std::string> lines;
        for (const wchar_t* line : m_words.exchanges) {
            lines.push_back(Ansi(line));
        }
        m_exchange.SetMinVisibleItems(10);
        m_exchange.SetItems(lines, true);
        m_direction.SetListOnly(true);
        m_direction.SetItems({DirectionToText('B'), DirectionToText('S')}, false);
        m_direction.SetCurSel(0);
        m_account.SetShowFullText(true);
        m_account.SetItems({"10001 Lee", "10002 Wang", "200001 Chan"}, true);
        m_account.SetCurSel(1);
        SetDlgItemText(kWhole, "97");
        SetDlgItemText(kNumerator, "3");
        SetDlgItemText(kQty, "5");
        ::SetFocus(m_exchange.EditWindow());
    }
    bool Translate(MSG& message) {
        switch (TranslateDialogKey(m_hWnd, message, kConfirm, kCancel, m_numbers)) {
            case KeyOutcome::Consumed:
                return true;
            case KeyOutcome::DialogKeyboard:
                return CDialog::PreTranslateMessage(&message) != FALSE;
            default:
                return false;
        }
    }
    void React(int id, int code) {
        if (code == EN_UPDATE) {
            m_numbers.OnTextUpdate(id);
        } else if (code == BN_CLICKED && id == kPick) {
            OpenPopup();
        } else if (code == BN_CLICKED && id == kConfirm) {
            XMessageBox(m_hWnd, Ansi(m_words.question), "Emendo", MB_OKCANCEL,
                        {RGB(255, 0, 0), RGB(255, 255, 224)});
        } else if (code == BN_CLICKED && id == kCancel) {
            PostMessage(WM_CLOSE);
        }
    }
    void OpenPopup() {
        if (!m_popup.m_hWnd && m_popup.CreatePopup(m_hWnd)) {
            m_popup.SetNotifyWnd(m_hWnd);
        }
        m_popup.Refresh("");
        m_popup.PlaceUnder(GetDlgItem(kPick));
        m_popup.Toggle();
    }
    static std::string ResText(unsigned id) {
        std::string text;
        return LoadResString(text, id);
    }

    const Words& m_words;
    EighthsContext m_context;
    NumericEntry m_numbers{kTable, m_context};
    CxComboBox m_exchange;
    CxComboBox m_direction;
    CxComboBox m_account;
    CSeleCodeWnd m_popup;
};

struct Options {
    const Words* words = &kWords[2];
    std::string open;
    std::string screenshot;
};

bool Read(int count, char** arguments, Options& options) {
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string name = arguments[i];
        const std::string value = arguments[i + 1];
        if (name == "--lang") {
            options.words = nullptr;
            for (const Words& words : kWords) {
                options.words = std::to_string(words.language) == value ? &words : options.words;
            }
        } else if (name == "--open") {
            options.open = value;
        } else if (name == "--screenshot") {
            options.screenshot = value;
        } else {
            return false;
        }
    }
    return count % 2 == 1 && options.words;
}

struct Picture {
    std::string file;
    bool saved = true;
} g_picture;

// By a timer: the message box runs a loop of its own.
void CALLBACK TakePicture(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    g_picture.saved = SavePicture(nullptr, g_picture.file);
    ::PostQuitMessage(0);
}

}  // namespace

int main(int count, char** arguments) {
    Options options;
    if (!Read(count, arguments, options)) {
        std::puts("controls_gallery [--lang 2052|1028|1033] [--open popup|list|box] [--screenshot FILE]");
        return 2;
    }
    g_wResLanguage = options.words->language;
    FillBook(*options.words);
    Gallery gallery(*options.words);
    HostLoop loop([&](const MSG& message) { return gallery.m_hWnd && OfferToWindows(gallery, message); });
    loop.PumpUntilIdle();
    if (!options.screenshot.empty()) {
        g_picture.file = options.screenshot;
        ::SetTimer(nullptr, 0, 1000, &TakePicture);
    }
    gallery.Open(options.open);
    while (!loop.QuitSeen()) {
        loop.PumpUntil([&] { return loop.QuitSeen(); }, 1000);
    }
    return g_picture.saved ? 0 : 1;
}
