#pragma once

#include "trade/contract_key.h"
#include "trade/trade_data.h"

#include <string>
#include <string_view>

// Stands between a contract's short text and its display name.
inline constexpr char NameSeparator = '\x01';

// Reads a full contract text ("EXA CM 1509 C3000") into a key that the caller has cleared; the sign stays as
// it is. False for a malformed text; the key may then hold some fields and is to be discarded. Allocates
// nothing.
bool ParseContractText(std::string_view text, ContractKey& key);

// Writes the short text (the contract part alone) or the full one. With `withName` the short form is followed
// by NameSeparator and the display name of the contract, when the trade data knows it. Always true; a key of
// an unknown commodity type leaves `text` as it was.
bool FormatContractText(const ContractKey& key, std::string& text, bool shortForm, bool withName,
                        const TradeData& trade);

// "Sign Exchange Commodity Contract", for an option with its letter and strike. Always true; other types
// write nothing.
bool FormatContractWithSign(std::string& text, const SingleContractKey& key);

// False only for a commodity that quotes its second leg first.
bool IsFirstLegFirst(const ContractKey& key, const TradeData& trade);

// The two legs in the order in which they are sent. Untouched when the commodity is not known.
void SplitContractLegs(const ContractKey& key, SingleContractKey& first, SingleContractKey& second,
                       const TradeData& trade);
