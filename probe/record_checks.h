#pragma once

#include "probe/findings.h"
#include "trade/host_records.h"
#include "trade/trade_data.h"

#include <string>

// What the checks of a terminal's data work with.
struct Subject {
    Findings& findings;
    ITradeApi& api;  // for what the access layer smooths over; watched, like the one inside `data`
    TradeData data;  // the way in which the module reads
    unsigned until;  // tick count at which the looking ends

    bool OutOfTime(const char* place) const;  // notes where it ended, once a place
};

// What a field must be: a code is printable ASCII and not empty.
enum class Text { kName, kCode, kCodeOrEmpty };
void CheckText(Findings& findings, std::string_view field, std::size_t width, Text kind, const char* place);
template <std::size_t Width>
void CheckText(Findings& findings, const FixedText<Width>& field, Text kind, const char* place) {
    CheckText(findings, field.View(), Width, kind, place);
}
template <typename Key>
void CheckLegTexts(Findings& findings, const Key& key, const char* place) {
    CheckText(findings, key.sign, Text::kCodeOrEmpty, place);
    CheckText(findings, key.exchangeNo, Text::kCode, place);
    CheckText(findings, key.commodityNo, Text::kCode, place);
    CheckText(findings, key.contractNo, Text::kCodeOrEmpty, place);
    CheckText(findings, key.strikePrice, Text::kCodeOrEmpty, place);
}

// "HQ NWX F WH 2505", for findings.
std::string NameOf(const CommodityKey& key);
std::string NameOf(const ContractKey& key);

// Each looks at what its name says and returns a line about how much that was.
std::string CheckAccounts(const Subject& subject, ISysConfig* config);
std::string CheckCodedLists(const Subject& subject);  // uppers, currencies, signs
std::string CheckContracts(
    const Subject& subject);  // exchanges, commodities, contracts, prices, three months
std::string CheckPositions(const Subject& subject);
void CheckPosition(Findings& findings, const PositionRecord& position, const char* place);
