#pragma once

#include "trade/contract_key.h"

#include <string>
#include <string_view>

// The contract part of a key as text, the form in which the book file names contracts: "2501" for a future,
// "2501/2505" for a pair of months, "2501 C3000" for an option, "2501 C3000/2501 P3000" for a pair of
// options, normally empty for goods.

// All commodity types that the host knows, and those whose contracts have two legs.
bool IsKnownCommodityType(char commodityType);
bool HasTwoLegs(char commodityType);

// Fills the leg fields of a cleared key. False when the text does not have the shape of the type (the key may
// then hold some fields) or a code does not fit its field.
bool ReadContractPart(char commodityType, std::string_view text, ContractKey& key);
std::string ContractPart(const ContractKey& key);
std::string ContractPart(const SingleContractKey& leg);

// "NWX F WH 2501": exchange, type, commodity, contract part; the form of a contract in the book file and in
// texts for people. The sign is not part of it.
std::string ContractName(const ContractKey& key);
std::string ContractName(const SingleContractKey& leg);
// False for a malformed text; the sign is left as it is.
bool ReadContractName(std::string_view text, ContractKey& key);
