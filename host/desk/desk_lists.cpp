#include "desk/desk_list.h"

#include "book/contract_part.h"
#include "book/host_text.h"
#include "book/price_format.h"
#include "services/wording.h"

#include <memory>
#include <unordered_map>

namespace {

template <typename Row, typename Text>
DeskColumn TextColumn(const char* title, int width, Text text) {
    return {title, width, [text](const void* row) { return text(*static_cast<const Row*>(row)); }, nullptr};
}

// A number that is shown as another text, such as a price in fractions.
template <typename Row, typename Number, typename Text>
DeskColumn NumberColumn(const char* title, int width, Number number, Text text) {
    return {title, width, [text](const void* row) { return text(*static_cast<const Row*>(row)); },
            [number](const void* row) { return static_cast<double>(number(*static_cast<const Row*>(row))); }};
}

template <typename Row, typename Number>
DeskColumn CountColumn(const char* title, int width, Number number) {
    return NumberColumn<Row>(title, width, number,
                             [number](const Row& row) { return std::to_string(number(row)); });
}

template <std::size_t Width>
std::string Shown(const FixedText<Width>& text) {
    return Utf8FromAnsi(text.View());
}

// The word of a code, or the code itself.
std::string CodeText(Words words, char code) {
    const std::string_view word = WordOf(words, code);
    return word.empty() ? std::string(code ? 1 : 0, code) : Say(word);
}

// Names as the book file has them: those in the records are cut, and hold only what the code page knows.
class Names {
public:
    explicit Names(const Catalogue& catalogue) : m_catalogue(catalogue) {
        for (const Entry<ContractRecord>& contract : catalogue.contracts) {
            m_contracts[&contract.record] = &contract.name;
        }
        for (const Entry<CommodityRecord>& commodity : catalogue.commodities) {
            m_commodities[&commodity.record] = &commodity.name;
        }
    }
    // A contract without a name of its own is called after its commodity.
    std::string OfContract(const ContractKey& key) const {
        const auto contract = m_contracts.find(m_catalogue.FindContract(key));
        if (contract != m_contracts.end() && !contract->second->empty()) {
            return *contract->second;
        }
        const auto commodity = m_commodities.find(m_catalogue.FindCommodity(CommodityOf(key)));
        return commodity == m_commodities.end() ? std::string()
                                                : *commodity->second + ' ' + Utf8FromAnsi(ContractPart(key));
    }
    template <typename Key>
    std::string Price(double price, const Key& key) const {
        return PriceText(price, m_catalogue.FindCommodity(CommodityOf(key)));
    }

private:
    const Catalogue& m_catalogue;
    std::unordered_map<const ContractRecord*, const std::string*> m_contracts;
    std::unordered_map<const CommodityRecord*, const std::string*> m_commodities;
};
using NamesPointer = std::shared_ptr<const Names>;

template <typename Rows>
DeskList::Reader ReaderOf(const Rows& rows) {
    return [&rows] {
        std::vector<const void*> pointers;
        pointers.reserve(rows.size());
        for (const auto& row : rows) {
            pointers.push_back(&row);
        }
        return pointers;
    };
}

template <typename Row>
DeskColumn AccountColumn() {
    return TextColumn<Row>("Account", 70, [](const Row& row) { return Shown(row.record.accountNo); });
}

template <typename Row>
DeskColumn ContractColumn(int width) {
    return TextColumn<Row>("Contract", width,
                           [](const Row& row) { return Utf8FromAnsi(ContractName(row.record.key)); });
}

template <typename Row>
DeskColumn SideColumn() {
    return TextColumn<Row>("Side", 44,
                           [](const Row& row) { return CodeText(Words::kDirection, row.record.direction); });
}

template <typename Row, typename Price>
DeskColumn PriceColumn(const NamesPointer& names, Price price) {
    return NumberColumn<Row>("Price", 80, price, [names, price](const Row& row) {
        return names->Price(price(row), row.record.key);
    });
}

DeskList MakeOrders(const Book& book, const NamesPointer& names) {
    using Row = OrderEntry;
    return {
        "Orders",
        {
            CountColumn<Row>("No", 56, [](const Row& row) { return row.record.orderNo + 0; }),
            AccountColumn<Row>(),
            ContractColumn<Row>(150),
            TextColumn<Row>("Name", 140,
                            [names](const Row& row) { return names->OfContract(row.record.key); }),
            SideColumn<Row>(),
            TextColumn<Row>("State", 110,
                            [](const Row& row) { return CodeText(Words::kState, row.record.orderState); }),
            CountColumn<Row>("Qty", 50, [](const Row& row) { return row.record.orderQty + 0; }),
            CountColumn<Row>("Filled", 50, [](const Row& row) { return row.record.fillQty + 0; }),
            PriceColumn<Row>(names, [](const Row& row) { return row.record.orderPrice; }),
            NumberColumn<Row>(
                "Fill price", 80, [](const Row& row) { return row.record.fillPrice; },
                [names](const Row& row) {
                    return row.record.fillQty ? names->Price(row.record.fillPrice, row.record.key) : "";
                }),
            TextColumn<Row>("Type", 70,
                            [](const Row& row) { return CodeText(Words::kOrderType, row.record.orderType); }),
            TextColumn<Row>("Source", 70,
                            [](const Row& row) { return CodeText(Words::kSource, row.record.orderSource); }),
            TextColumn<Row>("Upper", 60, [](const Row& row) { return Shown(row.record.upperNo); }),
            TextColumn<Row>("Input", 125, [](const Row& row) { return Shown(row.record.inputTime); }),
            TextColumn<Row>("System no", 130, [](const Row& row) { return Shown(row.record.systemNo); }),
        },
        ReaderOf(book.ledger.Orders())};
}

DeskList MakeFills(const Book& book, const NamesPointer& names) {
    using Row = FillEntry;
    return {
        "Fills",
        {
            TextColumn<Row>("No", 84, [](const Row& row) { return Shown(row.record.fillNo); }),
            CountColumn<Row>("Order", 50,
                             [](const Row& row) { return row.order ? row.order->record.orderNo + 0 : 0; }),
            AccountColumn<Row>(),
            ContractColumn<Row>(120),
            SideColumn<Row>(),
            CountColumn<Row>("Qty", 44, [](const Row& row) { return row.record.fillQty + 0; }),
            PriceColumn<Row>(names, [](const Row& row) { return row.record.fillPrice; }),
            TextColumn<Row>("Time", 125, [](const Row& row) { return Shown(row.record.fillTime); }),
            TextColumn<Row>("Upper", 60, [](const Row& row) { return Shown(row.record.upperNo); }),
            TextColumn<Row>("Exchange no", 130,
                            [](const Row& row) { return Shown(row.record.exchangeFillNo); }),
        },
        [&book] {
            const std::vector<FillEntry*> fills = book.ledger.Fills();
            return std::vector<const void*>(fills.begin(), fills.end());
        }};
}

DeskList MakePositions(const Book& book, const NamesPointer& names) {
    using Row = PositionEntry;
    return {"Positions",
            {
                AccountColumn<Row>(),
                ContractColumn<Row>(120),
                SideColumn<Row>(),
                CountColumn<Row>("Open", 50, [](const Row& row) { return row.record.openQty + 0; }),
                PriceColumn<Row>(names, [](const Row& row) { return row.record.price; }),
                TextColumn<Row>("Upper", 60, [](const Row& row) { return Utf8FromAnsi(row.upperNo); }),
            },
            [&book] {
                std::vector<const void*> rows;
                for (const PositionEntry& row : book.ledger.AllPositions().Rows()) {
                    if (row.record.openQty > 0) {
                        rows.push_back(&row);
                    }
                }
                return rows;
            }};
}

DeskList MakeAccounts(const Book& book) {
    using Row = Entry<UserRecord>;
    return {"Accounts",
            {
                AccountColumn<Row>(),
                TextColumn<Row>("Name", 170, [](const Row& row) { return row.name; }),
                TextColumn<Row>("Sign", 50, [](const Row& row) { return Shown(row.record.sign); }),
                TextColumn<Row>("Server", 60, [](const Row& row) { return Shown(row.record.serverKey); }),
                TextColumn<Row>("Operator", 70,
                                [](const Row& row) {
                                    return row.record.group ? Shown(row.record.group->operatorNo) : "";
                                }),
                TextColumn<Row>("Tradable", 60,
                                [](const Row& row) {
                                    return Say(row.record.group && row.record.group->tradable == 'Y' ? "yes"
                                                                                                     : "no");
                                }),
            },
            ReaderOf(book.catalogue.accounts)};
}

DeskList MakeJournal(const Journal& journal) {
    using Row = JournalRow;
    const auto rows = std::make_shared<std::deque<Row>>();
    DeskList list{"Journal",
                  {
                      TextColumn<Row>("Time", 150, [](const Row& row) { return row.time; }),
                      TextColumn<Row>("Request", 84, [](const Row& row) { return row.operation; }),
                      TextColumn<Row>("Answer", 90, [](const Row& row) { return Say(row.answer); }),
                      TextColumn<Row>("Remarks", 220, [](const Row& row) { return row.remarks; }),
                      TextColumn<Row>("What changed", 380, [](const Row& row) { return row.subject; }),
                  },
                  [rows, &journal] {
                      while (rows->size() < journal.Lines().size()) {
                          rows->push_back(ReadJournalRow(journal.Lines()[rows->size()], rows->size()));
                      }
                      return ReaderOf(*rows)();
                  }};
    list.marked = [](const void* row) { return !static_cast<const Row*>(row)->remarks.empty(); };
    return list;
}

}  // namespace

JournalRow ReadJournalRow(const std::string& line, std::size_t number) {
    const Json entry = Json::parse(line);
    JournalRow row;
    row.line = number;
    row.time = entry.value("time", "");
    row.operation = entry.value("operation", "");
    row.answer = entry.contains("note") ? entry.value("note", "") : "accepted";
    for (const Json& change : entry.value("changed", Json::array())) {
        if (change.value("kind", "") != "position") {
            row.subject += (row.subject.empty() ? "" : "; ") + change.value("kind", "") + ' ' +
                           change.value("id", "") + ' ' + change.value("what", "") + ": " +
                           change.value("text", "");
        }
    }
    for (const Json& remark : entry.value("remarks", Json::array())) {
        row.remarks += (row.remarks.empty() ? "" : "; ") + remark.get<std::string>();
    }
    return row;
}

std::vector<DeskList> MakeDeskLists(const Book& book, const Journal& journal) {
    const auto names = std::make_shared<const Names>(book.catalogue);
    std::vector<DeskList> lists;
    lists.push_back(MakeOrders(book, names));
    lists.push_back(MakeFills(book, names));
    lists.push_back(MakePositions(book, names));
    lists.push_back(MakeAccounts(book));
    lists.push_back(MakeJournal(journal));
    for (DeskList& list : lists) {
        list.Reload();
    }
    return lists;
}
