#pragma once

#include "book/record_fields.h"
#include "frame/raw_host.h"
#include "trade/fake_config.h"
#include "trade/sample_book.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

// One thing that followed a confirm: a message box with its buttons, or a request with its bytes.
struct Event {
    std::string what;
    std::string bytes = {};
};

// What follows a confirm, in order, with the answers and the failures that were decided before: one bit for
// each question (1: the affirmative button) and one for each request (1: the server refuses).
struct Sequel {
    unsigned answers = 0;
    unsigned failures = 0;
    std::vector<Event> events = {};

    bool refused = false;  // the last question was
    bool sentAfterRefusal = false;

    bool Box(const std::string& text, const std::string& caption, const std::string& buttons) {
        events.push_back({"box [" + caption + "] " + buttons + ": " + text});
        refused = buttons != "OK" && !Next(answers);
        return !refused;
    }
    template <typename Record>
    bool Send(const std::string& what, const Record& record) {
        events.push_back({what, std::string(reinterpret_cast<const char*>(&record), sizeof record)});
        sentAfterRefusal = sentAfterRefusal || refused;
        return !Next(failures);
    }

private:
    static bool Next(unsigned& bits) {
        const bool set = bits & 1;
        bits >>= 1;
        return set;
    }
};

// Keeps requests in the sequel of the confirm that runs; one outside of any is unasked.
class Server : public FakeTradeService {
public:
    Sequel* sequel = nullptr;
    int unasked = 0;

    int SendOrder(OrderRecord* order) override { return Keep("SendOrder", *order) ? 0 : -1; }
    int DeleteOrder(std::uint32_t orderNo) override { return Keep("DeleteOrder", orderNo); }
    int SendFill(FillRecord* fill) override { return Keep("SendFill", *fill) ? 0 : -1; }
    int SendExercise(OrderRecord* order) override { return Keep("SendExercise", *order) ? 0 : -1; }
    int RemoveFill(const char* fillNo, FillRecord* fill) override {
        return Keep(std::string("RemoveFill ") + fillNo, *fill) ? 0 : -1;
    }

private:
    template <typename Record>
    bool Keep(const std::string& what, const Record& record) {
        unasked += sequel == nullptr;
        return sequel && sequel->Send(what, record);
    }
};

class ListWindow final : public ITradeListWindow {
public:
    ISelectDataNotify* notify = nullptr;
    bool open = false;
    void Place(int, int, int, int, int) override {}
    void SetFilter(const PositionFilterRecord*) override {}
    void SetNotify(ISelectDataNotify* listener) override { notify = listener; }
    // clang-format off
    RESERVED(0) RESERVED(1) RESERVED(2) RESERVED(3) RESERVED(4)
    // clang-format on
};

class ListMaker final : public ITradeList {
public:
    ListWindow windows[2];
    ITradeListWindow* CreateListWindow(int, int, HWND, int) override {
        ListWindow& made = windows[windows[0].open];
        made.open = true;
        return &made;
    }
    void ReleaseListWindow(ITradeListWindow* window) override {
        *static_cast<ListWindow*>(window) = ListWindow();
    }
};

// The data of a host with two signs, of which the second lacks some of the commodities, full of what is
// easily mistaken for one another: one number under both signs, codes that begin with other codes, two types
// under one code, codes in lower case, prices in halves, eighths and quarters.
class World : public SampleBook {
public:
    std::vector<UserRecord*> everyUser;
    std::string threeMonthDate;
    OrderRecord order{};
    FillRecord fill{};
    PositionRecord changed{};

    World() {
        for (int i = 0; i < 4; ++i) {
            m_groups[i].sign.Set(i == 1 ? "SGB" : "SGA");
            m_groups[i].operatorNo.Set("OPER" + std::to_string(i));
            m_groups[i].tradable = i == 2 ? 'N' : 'Y';
            m_groups[i].accountLock = i == 3 ? 'c' : 'a';
        }
        const std::tuple<const char*, const char*, int> rows[] = {
            {"860001", "Second", 1}, {"100010", "Longer", 0}, {"10001", "Shorter", 0}, {"860001", "First", 0},
            {"999", "Closed", 2},    {"555", "Locked", 3},    {"800101", "Moving", 0}, {"900", "Other", 1}};
        for (const auto& [number, name, ofGroup] : rows) {
            UserRecord& user = AddUser(number, name);
            user.group = &m_groups[ofGroup];
            user.sign = user.group->sign;
        }
        everyUser = users;
        AddMarket("SGA", true);
        AddMarket("SGB", false);
        for (const char* code : {"CNY", "USD", "USDX", "EUR"}) {
            AddCurrency(code);
        }
        m_whole = {users, uppers, currencies, exchanges, contracts};
    }

    // As at first, but for what the bits say.
    void Reset(unsigned bits) {
        for (const auto& [record, bytes] : m_gone) {
            std::memcpy(record, bytes.data(), bytes.size());
        }
        m_gone.clear();
        std::tie(users, uppers, currencies, exchanges, contracts) = m_whole;
        threeMonthDate = bits & 1 ? "240613" : "3M";
        threeMonthContractNo = threeMonthDate.c_str();
        longQty = bits & 2 ? 3 : 0;
        shortQty = bits & 4 ? 3 : 0;
        signEntries.assign(bits & 8 ? 1 : 0, this);
        orders.clear();
    }
    // An account that is not there any more, or is again. One always is.
    void Toggle(int number) {
        UserRecord* user = everyUser[static_cast<std::size_t>(number) % everyUser.size()];
        if (user->accountNo != "10001" && std::erase(users, user) == 0) {
            users.push_back(user);
        }
    }

    // A record that is gone for good; who still looks at it finds rubbish.
    void Vanish(unsigned number) {
        const unsigned which = number / 5;
        number % 5 == 0   ? Vanish(users, which)
        : number % 5 == 1 ? Vanish(uppers, which)
        : number % 5 == 2 ? Vanish(currencies, which)
        : number % 5 == 3 ? Vanish(exchanges, which)
                          : Vanish(contracts, which);
    }

    void GetUsers(IDataContainer* list, const char* sign) override { OfSign(users, list, sign); }
    void GetUppers(IDataContainer* list, const char* sign) override { OfSign(uppers, list, sign); }
    void GetExchanges(IDataContainer* list, const char* sign) override { OfSign(exchanges, list, sign); }
    void FormatPrice(const void* record, double price, char* buffer, int size, int, char) override {
        const CommodityRecord* commodity = GetCommodity(record);
        if (const auto unit = commodity ? commodity->tickDenominator : 1; unit >= 2) {
            const double whole = std::floor(price);
            std::snprintf(buffer, size, "%.0f+%.0f/%u", whole, std::round((price - whole) * unit), unit);
        } else {
            std::snprintf(buffer, size, "%.10g", price);
        }
    }

    static constexpr const char* kContracts[] = {
        "EXA CM 1509",   "EXA CM 1512",         "EXA CM 1509/1512",   "EXA FR 1509",
        "EXA FR 1512",   "EXA FR 1509/1512",    "EXA CM&FR 1509",     "EXA CMX 1509",
        "EXA cu 2601",   "EXA CMO 1509 C3000",  "EXA CMO 1509 P3000", "EXA CMU 1509 C3000/1509 C3100",
        "EXA GD ",       "LMX CA 3M",           "LMX CA 240315",      "LMX CA 240329",
        "LMX CA 240330", "LMX CA 240613",       "LMX AL 3M",          "LMX AL 240315",
        "LMX AL 240401", "LMX CO 240315 C3000", "ice br 2601",        "ice brx 2602",
        "EXAB CM 1509"};

private:
    void AddMarket(const char* sign, bool all) {
        group.sign.Set(sign);
        for (const char* code : {"U10", "U1", "U2"}) {
            AddUpper(code);
            uppers.back()->sign = group.sign;
        }
        AddExchange("EXAB", "Longer");
        AddCommodity('F', "CM", 1, 1);
        AddExchange("EXA");
        AddCommodity('F', "CMX", 5, 1);
        AddCommodity('F', "CM", 0.5, 1);
        AddPair('m', "CM", 0.5, 'F', "CM", "CM");
        AddCommodity('F', "cu", 10, 1);
        if (all) {
            AddCommodity('F', "FR", 1, 8);
            AddPair('m', "FR", 1, 'F', "FR", "FR").tickDenominator = 8;
            AddPair('c', "CM&FR", 0.5, 'F', "CM", "FR").legOrder = '2';
            AddPair('O', "CMO", 1, 'F', "CM", "");
            AddPair('u', "CMU", 1, 'O', "CMO", "CMO");
        }
        AddCommodity('G', "GD", 1, 1);
        AddExchange("LMX", "Forward", true);
        AddCommodity('F', "CA", 0.25, 1).rollingCode = 'U';
        AddCommodity('F', "AL", 1, 4).rollingCode = 'U';
        AddPair('O', "CO", 1, 'F', "CA", "").rollingCode = 'U';
        AddExchange("ice", "Small");
        AddCommodity('F', "brx", 0.01, 1);
        AddCommodity('F', "br", 1, 32);
        for (const char* text : kContracts) {
            if (!GetCommodity(&AddContract(text).key)) {
                contracts.pop_back();
            }
        }
    }
    template <typename Record>
    void Vanish(std::vector<Record*>& records, unsigned which) {
        if (records.empty()) {
            return;
        }
        Record*& gone = records[which % records.size()];
        m_gone.emplace_back(gone, std::string(reinterpret_cast<const char*>(gone), sizeof *gone));
        std::memset(static_cast<void*>(gone), 0xDD, sizeof *gone);
        records.erase(records.begin() + which % records.size());
    }
    template <typename Record>
    static void OfSign(const std::vector<Record*>& records, IDataContainer* list, std::string_view sign) {
        for (Record* record : records) {
            if (sign.empty() || record->sign == sign) {
                list->Add(record);
            }
        }
    }

    GroupRecord m_groups[4]{};
    std::tuple<std::vector<UserRecord*>, std::vector<UpperRecord*>, std::vector<CurrencyRecord*>,
               std::vector<ExchangeRecord*>, std::vector<ContractRecord*>>
        m_whole;
    std::vector<std::pair<void*, std::string>> m_gone;
};
