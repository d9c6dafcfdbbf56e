#include "services/wording.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace {

constexpr std::uint16_t kSimplified = 2052;
constexpr std::uint16_t kTraditional = 1028;

struct Row {
    std::string_view english;
    const char* simplified;
    const char* traditional;
};

// Codes read as in the module's own lists.
constexpr Row kRows[] = {
    // menus
    {"Book", "帐簿", "帳簿"},
    {"Save", "保存", "儲存"},
    {"Save as...", "另存为...", "另存新檔..."},
    {"Close", "关闭", "關閉"},
    {"Dialogs", "对话框", "對話方塊"},
    {"Input order", "定单录入", "定單錄入"},
    {"Carry", "Carry录入", "Carry錄入"},
    {"Input exercise", "行权录入", "行權錄入"},
    {"Modify order", "定单修改", "定單修改"},
    {"Move order", "定单转移", "定單轉移"},
    {"Remove filled", "成交删除", "成交刪除"},
    {"Input fill", "成交录入", "成交錄入"},
    {"Modify fill", "成交修改", "成交修改"},
    {"Remove fill", "删除单笔成交", "刪除單筆成交"},
    {"View", "查看", "檢視"},
    {"Next list", "下一个列表", "下一個清單"},
    {"Previous list", "上一个列表", "上一個清單"},
    {"Taller", "加高", "加高"},
    {"Shorter", "降低", "降低"},
    {"Wider", "加宽", "加寬"},
    {"Narrower", "变窄", "變窄"},
    {"Explain journal line", "解释日志行", "解釋日誌行"},
    {"Explain", "解释", "解釋"},
    {"Refresh", "刷新", "重新整理"},
    {"Sort by", "排序", "排序"},
    {"Language", "语言", "語言"},
    {"Simplified Chinese", "简体中文", "簡體中文"},
    {"Traditional Chinese", "繁体中文", "繁體中文"},
    {"English", "英文", "英文"},
    {"As the system", "与系统相同", "與系統相同"},
    // lists and their columns
    {"Orders", "委托", "委託"},
    {"Fills", "成交", "成交"},
    {"Positions", "持仓", "持倉"},
    {"Accounts", "资金帐号", "資金帳號"},
    {"Journal", "日志", "日誌"},
    {"No", "编号", "編號"},
    {"Account", "资金帐号", "資金帳號"},
    {"Contract", "合约", "合約"},
    {"Name", "名称", "名稱"},
    {"Side", "买卖", "買賣"},
    {"State", "状态", "狀態"},
    {"Qty", "数量", "數量"},
    {"Filled", "已成交", "已成交"},
    {"Price", "价格", "價格"},
    {"Fill price", "成交价", "成交價"},
    {"Type", "类型", "類型"},
    {"Source", "来源", "來源"},
    {"Upper", "上手号", "上手號"},
    {"Input", "录入时间", "錄入時間"},
    {"System no", "系统号", "系統號"},
    {"Order", "委托号", "委託號"},
    {"Time", "时间", "時間"},
    {"Exchange no", "交易所成交号", "交易所成交號"},
    {"Open", "持仓量", "持倉量"},
    {"Sign", "标识", "標識"},
    {"Server", "服务器", "伺服器"},
    {"Operator", "操作员", "操作員"},
    {"Tradable", "可交易", "可交易"},
    {"Request", "请求", "請求"},
    {"Answer", "答复", "答覆"},
    {"Remarks", "备注", "備註"},
    {"What changed", "变动", "變動"},
    // codes
    {"buy", "买入", "買入"},
    {"sell", "卖出", "賣出"},
    {"both", "双边", "雙邊"},
    {"yes", "是", "是"},
    {"no", "否", "否"},
    {"market", "市价", "市價"},
    {"limit", "限价", "限價"},
    {"stop-loss", "止损", "止損"},
    {"limit stop", "限价止损", "限價止損"},
    {"exercise", "行权", "行權"},
    {"abstain", "弃权", "棄權"},
    {"enquiry", "询价", "詢價"},
    {"offer", "应价", "應價"},
    {"iceberg", "冰山", "冰山"},
    {"ghost", "影子", "影子"},
    {"swap", "互换", "互換"},
    {"carry", "CARRY单", "CARRY單"},
    {"delivery exercise", "交割行权", "交割行權"},
    {"E-trade", "E-TRADE", "E-TRADE"},
    {"J-trade", "J-TRADE", "J-TRADE"},
    {"manual", "人工单", "人工單"},
    {"proxy", "代理单", "代理單"},
    {"program", "程序单", "程序單"},
    {"sent", "已发送", "已發送"},
    {"accepted", "已受理", "已受理"},
    {"executed", "已生效", "已生效"},
    {"working", "已排队", "已排隊"},
    {"partially filled", "部分成交", "部分成交"},
    {"filled", "完全成交", "完全成交"},
    {"cancelling", "待撤", "待撤"},
    {"modifying", "待改", "待改"},
    {"cancelled", "已撤单", "已撤單"},
    {"rest cancelled", "已撤余单", "已撤餘單"},
    {"rejected", "指令失败", "指令失敗"},
    {"suspended", "已挂起", "已掛起"},
    // what the desk says
    {"Emendo desk", "Emendo 工作台", "Emendo 工作檯"},
    {"Select an order first", "请先选择委托", "請先選擇委託"},
    {"Select a fill first", "请先选择成交", "請先選擇成交"},
    {"Select a line of the journal first", "请先选择日志行", "請先選擇日誌行"},
    {"The module opened nothing", "模块没有打开对话框", "模組沒有開啟對話方塊"},
    {"Finish or close the dialog that is open first", "请先完成或关闭已打开的对话框",
     "請先完成或關閉已開啟的對話方塊"},
    {"The sample book is for reading; save it under a name to keep what is entered",
     "示例帐簿只供查看；另存后才能保留录入的内容", "示例帳簿只供檢視；另存新檔後才能保留錄入的內容"},
    {"Book saved", "帐簿已保存", "帳簿已儲存"},
    {"The book was not saved: %1", "帐簿没有保存：%1", "帳簿沒有儲存：%1"},
    {"This system cannot show that language", "本系统不能显示该语言", "本系統無法顯示該語言"},
    {"Module started again", "模块已重新启动", "模組已重新啟動"},
    {"The module could not be started again: %1", "模块无法重新启动：%1", "模組無法重新啟動：%1"},
    {"second look: %1", "复核：%1", "覆核：%1"},
    {"No module", "没有模块", "沒有模組"},
    {"%1 in language %2", "%1，语言 %2", "%1，語言 %2"},
    // the second look
    {"the same was entered %1 s before", "%1 秒前录入过相同内容", "%1 秒前錄入過相同內容"},
    {"quantity %1 is far above the usual %2 of account %3", "数量 %1 远大于资金帐号 %3 通常的 %2",
     "數量 %1 遠大於資金帳號 %3 通常的 %2"},
    {"price %1 is far from the last, %2", "价格 %1 与上一成交价 %2 相差很大",
     "價格 %1 與上一成交價 %2 相差很大"},
    {"with the order entered %1 s before this looks like the spread %2",
     "与 %1 秒前录入的委托合起来像是价差合约 %2", "與 %1 秒前錄入的委託合起來像是價差合約 %2"},
    {"a stop order with trigger price 0", "止损单的触发价为零", "止損單的觸發價為零"},
    {"fill price %1 differs from the order price %2", "成交价 %1 与委托价 %2 不同",
     "成交價 %1 與委託價 %2 不同"},
    {"fill price %1 is that of the order, which was filled at %2",
     "成交价 %1 取自委托价，而该委托的成交价是 %2", "成交價 %1 取自委託價，而該委託的成交價是 %2"},
    {"numerator %1 of the %2 is not below its denominator %3", "%2的分子 %1 不小于分母 %3",
     "%2的分子 %1 不小於分母 %3"},
    {"a position is chosen without a %1", "选择了持仓但没有填写%1", "選擇了持倉但沒有填寫%1"},
    {"order price", "委托价", "委託價"},
    {"trigger price", "触发价", "觸發價"},
    {"fill price", "成交价", "成交價"},
    {"fill price 2", "成交价2", "成交價2"},
    {"near position price", "近期持仓价", "近期持倉價"},
    {"forward position price", "远期持仓价", "遠期持倉價"},
};

std::uint16_t g_language = 0;

}  // namespace

void SpeakLanguage(std::uint16_t language) {
    g_language = language;
}

std::string Say(std::string_view text, std::initializer_list<std::string> arguments) {
    std::string said(text);
    const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                   [&](const Row& candidate) { return candidate.english == text; });
    if (row != std::end(kRows) && g_language == kSimplified) {
        said = row->simplified;
    } else if (row != std::end(kRows) && g_language == kTraditional) {
        said = row->traditional;
    }
    // From the last on, so that what an argument says is not taken for a place.
    for (std::size_t at = said.size(); at-- > 0;) {
        if (said[at] == '%' && at + 1 < said.size()) {
            const auto number = static_cast<std::size_t>(said[at + 1] - '1');
            if (number < arguments.size()) {
                said.replace(at, 2, arguments.begin()[number]);
            }
        }
    }
    return said;
}

std::string SayMenu(std::string_view text) {
    const std::size_t mark = text.find('&');
    if (mark == std::string_view::npos || mark + 1 == text.size()) {
        return Say(text);
    }
    std::string plain(text);
    plain.erase(mark, 1);
    std::string said = Say(plain);
    if (said == plain) {
        return std::string(text);
    }
    const std::size_t end = said.ends_with("...") ? said.size() - 3 : said.size();
    return said.insert(end, std::string("(&") +
                                static_cast<char>(std::toupper(static_cast<unsigned char>(text[mark + 1]))) +
                                ')');
}
