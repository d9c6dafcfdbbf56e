#include "entry/contract_catalog.h"

#include "trade/contract_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>
#include <utility>

namespace {

constexpr std::size_t kCommodityCodeLength = 10;

std::string Labelled(std::string_view code, std::string_view name) {
    std::string text;
    text.reserve(code.size() + name.size() + 2);
    return text.append(code).append("[").append(name).append("]");
}

std::string Joined(std::string_view first, std::string_view second) {
    std::string text;
    text.reserve(first.size() + second.size() + 1);
    return text.append(first).append(" ").append(second);
}

// The parts before and behind the first blank.
std::pair<std::string_view, std::string_view> SplitAtBlank(std::string_view text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos) {
        return {text, {}};
    }
    return {text.substr(0, blank), text.substr(blank + 1)};
}

std::vector<const CommodityRecord*> SortedCommodities(const TradeData& trade,
                                                      const ExchangeRecord& exchange) {
    std::multimap<std::string, const CommodityRecord*> sorted;  // equal ones stay in the host's order
    for (const CommodityRecord* commodity : trade.Commodities({exchange.sign, exchange.exchangeNo})) {
        sorted.emplace(CommodityOrderKey(*commodity), commodity);
    }
    std::vector<const CommodityRecord*> commodities;
    commodities.reserve(sorted.size());
    for (const auto& [key, commodity] : sorted) {
        commodities.push_back(commodity);
    }
    return commodities;
}

// By whole fields; what a host left behind a terminator costs a second writing and nothing else.
bool SameSeries(const ContractKey& left, const ContractKey& right) {
    return std::memcmp(&left.commodityNo, &right.commodityNo,
                       sizeof left.commodityNo + sizeof left.contractNo) == 0;
}

std::vector<CatalogNode> SeriesOf(const std::vector<const ContractRecord*>& contracts) {
    // Many strikes share a series and stand together: the text is written once for them all.
    std::vector<std::string> series;
    const ContractKey* previous = nullptr;
    for (const ContractRecord* contract : contracts) {
        const ContractKey& key = contract->key;
        if (!ListsStrikes(key.commodityType) || (previous && SameSeries(*previous, key))) {
            continue;
        }
        series.push_back(Joined(key.commodityNo.View(), key.contractNo.View()));
        previous = &key;
    }
    std::sort(series.begin(), series.end());
    series.erase(std::unique(series.begin(), series.end()), series.end());
    std::vector<CatalogNode> nodes;
    nodes.reserve(series.size());
    for (std::string& text : series) {
        nodes.push_back({text, text, {}});
    }
    return nodes;
}

using NodeIterator = std::vector<CatalogNode>::const_iterator;

NodeIterator FindByCode(const std::vector<CatalogNode>& nodes, std::string_view code) {
    return std::find_if(nodes.begin(), nodes.end(),
                        [&](const CatalogNode& node) { return SplitAtBlank(node.data).first == code; });
}

NodeIterator FindSeries(const CatalogNode& commodity, const ContractKey& key) {
    return std::find_if(commodity.children.begin(), commodity.children.end(), [&](const CatalogNode& node) {
        return SplitAtBlank(node.data).second == key.contractNo.View();
    });
}

}  // namespace

bool ListsStrikes(char commodityType) {
    switch (commodityType) {
        case CommodityType::kOption:
        case CommodityType::kBullVertical:
        case CommodityType::kBearVertical:
        case CommodityType::kStraddle:
        case CommodityType::kStrangle:
            return true;
        default:
            return false;
    }
}

std::string CommodityOrderKey(const CommodityRecord& commodity) {
    // The first two stand under their own code, the others under that of their base.
    static constexpr char kOrder[] = {
        CommodityType::kGoods,           CommodityType::kFutures,  CommodityType::kSpreadMonth,
        CommodityType::kSpreadCommodity, CommodityType::kOption,   CommodityType::kBullVertical,
        CommodityType::kBearVertical,    CommodityType::kStraddle, CommodityType::kStrangle};
    const auto place = std::find(std::begin(kOrder), std::end(kOrder), commodity.commodityType) - kOrder;
    if (place == std::ssize(kOrder)) {
        return {};
    }
    std::string key = place < 2 ? commodity.commodityNo.Str() : commodity.relatedCommodityNo.Str();
    if (commodity.commodityType == CommodityType::kSpreadCommodity) {
        key += commodity.secondCommodityNo.Str();
    }
    return key + "$" + std::to_string(place + 1);
}

std::vector<CatalogNode> BuildCatalog(const TradeData& trade, const std::string& sign, bool forwardOnly) {
    std::vector<CatalogNode> exchanges;
    for (const ExchangeRecord* exchange : trade.Exchanges(sign)) {
        if (forwardOnly && exchange->forwardMarket == 0) {
            continue;
        }
        CatalogNode node;
        for (const CommodityRecord* commodity : SortedCommodities(trade, *exchange)) {
            const auto contracts = trade.Contracts(CommodityOf(*commodity));
            if (contracts.empty()) {
                continue;
            }
            if (node.children.empty()) {
                node.text = Labelled(exchange->exchangeNo.View(), exchange->exchangeName.View());
                node.data = Joined(commodity->exchangeNo.View(), commodity->sign.View());
            }
            CatalogNode child;
            child.text = Labelled(commodity->commodityNo.View(), commodity->commodityName.View());
            child.data = Joined(commodity->commodityNo.View(), {&commodity->commodityType, 1});
            if (ListsStrikes(commodity->commodityType)) {
                child.children = SeriesOf(contracts);
            }
            node.children.push_back(std::move(child));
        }
        if (!node.children.empty()) {
            exchanges.push_back(std::move(node));
        }
    }
    return exchanges;
}

std::vector<std::size_t> FindInCatalog(const std::vector<CatalogNode>& catalog,
                                       std::string_view contractText) {
    const auto [exchangeNo, rest] = SplitAtBlank(contractText);
    const std::string_view commodityNo = SplitAtBlank(rest).first;
    ContractKey key{};
    if (!ParseContractText(contractText, key)) {
        key = ContractKey{};
    }
    std::vector<std::size_t> path;
    const auto exchange = FindByCode(catalog, exchangeNo);
    if (exchange == catalog.end()) {
        return path;
    }
    path.push_back(static_cast<std::size_t>(exchange - catalog.begin()));
    const std::vector<CatalogNode>& commodities = exchange->children;
    auto best = commodities.end();
    int bestFit = 0;
    for (auto each = commodities.begin(); each != commodities.end(); ++each) {
        const auto [code, type] = SplitAtBlank(each->data);
        if (code != commodityNo || commodityNo.empty()) {
            continue;
        }
        // A contract without its strike reads like a future, and names the series of an option.
        const bool ofType = !type.empty() && type.front() == key.commodityType;
        const int fit = ofType ? 3 : FindSeries(*each, key) != each->children.end() ? 2 : 1;
        if (fit > bestFit) {
            best = each;
            bestFit = fit;
        }
    }
    if (best == commodities.end()) {
        return path;
    }
    path.push_back(static_cast<std::size_t>(best - commodities.begin()));
    if (const auto series = FindSeries(*best, key); series != best->children.end()) {
        path.push_back(static_cast<std::size_t>(series - best->children.begin()));
    }
    return path;
}

ContractChoice ReadChoice(std::span<const std::string_view> path) {
    ContractChoice choice;
    if (path.empty() || path.size() > 3) {
        return choice;
    }
    choice.level = static_cast<ContractChoice::Level>(path.size() - 1);
    if (choice.level == ContractChoice::Level::Series) {
        choice.seriesNo = SplitAtBlank(path[0]).second;
    }
    if (choice.level != ContractChoice::Level::Exchange) {
        const auto [code, type] = SplitAtBlank(path[path.size() - 2]);
        choice.commodityNo = code.substr(0, kCommodityCodeLength);
        choice.commodityType = type.empty() ? char{0} : type.front();
    }
    const auto [exchange, sign] = SplitAtBlank(path.back());
    choice.exchangeNo = exchange;
    choice.sign = sign;
    return choice;
}

std::string TreeClickText(const ContractChoice& choice) {
    const std::string text = Joined(choice.exchangeNo, choice.commodityNo);
    return choice.commodityType == CommodityType::kOption ? Joined(text, choice.seriesNo) : text;
}

std::string ListClickText(const ContractChoice& choice, std::string_view cell) {
    const std::string text = Joined(choice.exchangeNo, choice.commodityNo);
    if (choice.commodityType == CommodityType::kOption) {
        return Joined(Joined(text, choice.seriesNo), cell);
    }
    if (ListsStrikes(choice.commodityType)) {
        const std::size_t slash = cell.find('/');
        const bool pair = slash != std::string_view::npos;
        const std::string_view left = cell.substr(0, slash);
        const std::string_view right = pair ? cell.substr(slash + 1) : std::string_view{};
        return Joined(Joined(text, choice.seriesNo), left) + "/" + Joined(choice.seriesNo, right);
    }
    return Joined(text, cell);
}

bool ContractRows::Load(const ContractChoice& choice, const TradeData& trade) {
    const bool strikes = ListsStrikes(choice.commodityType);
    if (strikes && choice.level != ContractChoice::Level::Series) {
        m_contracts.clear();
        m_strikes.clear();
        return false;
    }
    CommodityKey key{};
    key.sign.Set(choice.sign);
    key.exchangeNo.Set(choice.exchangeNo);
    key.commodityType = choice.commodityType;
    key.commodityNo.Set(choice.commodityNo);
    const auto contracts = trade.Contracts(key);
    if (!strikes) {
        m_contracts.clear();
        m_contracts.reserve(contracts.size());
        for (const ContractRecord* contract : contracts) {
            m_contracts.push_back(*contract);
        }
        return true;
    }
    m_strikes.clear();
    const bool single = choice.commodityType == CommodityType::kOption;
    for (const ContractRecord* contract : contracts) {
        const ContractKey& found = contract->key;
        if (found.contractNo.View() != choice.seriesNo) {
            continue;
        }
        m_strikes.push_back(single ? found.strikePrice.Str()
                                   : found.optionType + found.strikePrice.Str() + "/" + found.optionType2 +
                                         found.strikePrice2.Str());
    }
    if (single) {
        // As text, like everywhere a strike is compared: "1000" stands before "900".
        std::sort(m_strikes.begin(), m_strikes.end());
        m_strikes.erase(std::unique(m_strikes.begin(), m_strikes.end()), m_strikes.end());
    }
    return true;
}

std::size_t ContractRows::Count(char commodityType) const {
    return ListsStrikes(commodityType) ? m_strikes.size() : m_contracts.size();
}

std::string ContractRows::Text(char commodityType, std::size_t row, int column) const {
    if (row >= Count(commodityType)) {
        return {};
    }
    if (commodityType == CommodityType::kOption) {
        const char letter = column == 0 ? 'C' : column == 1 ? 'P' : 'N';
        return letter + m_strikes[row];
    }
    if (ListsStrikes(commodityType)) {
        return m_strikes[row];
    }
    std::string text;
    FormatContractText(m_contracts[row].key, text, true, false, TradeData(nullptr));
    return text;
}

std::optional<ContractRows::Cell> ContractRows::Find(const ContractChoice& choice,
                                                     std::string_view contractText) const {
    ContractKey wanted{};
    if (!ParseContractText(contractText, wanted)) {
        return std::nullopt;
    }
    const int columns = choice.commodityType == CommodityType::kOption ? 2 : 1;
    for (std::size_t row = 0; row < Count(choice.commodityType); ++row) {
        for (int column = 0; column < columns; ++column) {
            const std::string cell = Text(choice.commodityType, row, column);
            ContractKey key{};
            if (!cell.empty() && ParseContractText(ListClickText(choice, cell), key) &&
                std::memcmp(&key, &wanted, sizeof key) == 0) {
                return Cell{row, column};
            }
        }
    }
    return std::nullopt;
}
