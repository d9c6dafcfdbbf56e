// A contract text that parses is written back as a text that parses to the same key.
#include "fuzz/fuzz_input.h"
#include "trade/contract_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const TradeData noTrade(nullptr);
    ContractKey key{};
    if (!ParseContractText({reinterpret_cast<const char*>(data), size}, key)) {
        return 0;
    }
    std::string full;
    std::string shortText;
    FormatContractText(key, full, false, false, noTrade);
    FormatContractText(key, shortText, true, true, noTrade);
    Require(full == key.exchangeNo.Str() + " " + key.commodityNo.Str() + " " + shortText);

    // A commodity code that was cut may have lost the sign of its type.
    if (key.commodityNo.View().size() < sizeof(key.commodityNo) - 1) {
        ContractKey again{};
        Require(ParseContractText(full, again));
        Require(std::memcmp(&key, &again, sizeof(key)) == 0);
    }
    return 0;
}
