#pragma once

#include "trade/trade_data.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What the contract popup shows and what a choice in it means, without its windows.

// True for the option commodities whose series list strikes, or pairs of strikes, instead of contracts.
bool ListsStrikes(char commodityType);

// A node of the tree: exchange, commodity, option series. `data` is what a click reads back:
// "ExchangeNo Sign", "CommodityNo CommodityType", "CommodityNo ContractNo".
struct CatalogNode {
    std::string text;
    std::string data;
    std::vector<CatalogNode> children;
};

// Orders the commodities of an exchange so that the products on one base commodity follow it.
std::string CommodityOrderKey(const CommodityRecord& commodity);

// Every exchange, commodity and series of the sign ("" means all) that has a contract. `forwardOnly` leaves
// only the exchanges that trade on the nearby/forward model.
std::vector<CatalogNode> BuildCatalog(const TradeData& trade, const std::string& sign, bool forwardOnly);

// The way to what a typed contract text names: the positions of its exchange, commodity and series among
// their siblings, as far as they are known. Of the commodities with one code the one of the text's type is
// meant.
std::vector<std::size_t> FindInCatalog(const std::vector<CatalogNode>& catalog,
                                       std::string_view contractText);

// What a clicked node stands for.
struct ContractChoice {
    enum class Level { Exchange, Commodity, Series };
    Level level = Level::Exchange;
    std::string sign;
    std::string exchangeNo;
    std::string commodityNo;
    char commodityType = 0;  // 0: no commodity
    std::string seriesNo;

    bool operator==(const ContractChoice&) const = default;
};

// Reads a choice from the data of the clicked node and of its ancestors, the node first. Empty or deeper
// paths give an empty choice.
ContractChoice ReadChoice(std::span<const std::string_view> path);

// The contract text of a click on a tree node.
std::string TreeClickText(const ContractChoice& choice);
// The contract text of a click on a list cell that shows `cell`.
std::string ListClickText(const ContractChoice& choice, std::string_view cell);

// The rows of the list beside the tree. Contract rows are copies, so that they outlive the host's records.
class ContractRows {
public:
    // Fills the rows for a choice. False when the choice is an option commodity without a series: all rows
    // are gone then and the list keeps its columns.
    bool Load(const ContractChoice& choice, const TradeData& trade);
    void ClearContracts() { m_contracts.clear(); }

    // Rows of the kind that `commodityType` lists.
    std::size_t Count(char commodityType) const;
    // Text of a cell; empty beyond the last row.
    std::string Text(char commodityType, std::size_t row, int column) const;
    // The cell whose choice means the contract of a typed text.
    struct Cell {
        std::size_t row;
        int column;
    };
    std::optional<Cell> Find(const ContractChoice& choice, std::string_view contractText) const;

private:
    std::vector<ContractRecord> m_contracts;
    std::vector<std::string> m_strikes;
};
