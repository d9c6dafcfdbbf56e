#pragma once

#include "res/language.h"
#include "res/resource_ids.h"

#include <iterator>
#include <string>

// The texts as they are written, in no code page.
struct Text {
    std::uint16_t language;
    unsigned id;
    const wchar_t* text;
};
constexpr Text kTexts[] = {
#define STRING(id, text) {kEnglish, id, L##text},
#include "res/strings_en.rc"
#undef STRING
#define STRING(id, text) {kSimplifiedChinese, id, L##text},
#include "res/strings_zh_cn.rc"
#undef STRING
#define STRING(id, text) {kTraditionalChinese, id, L##text},
#include "res/strings_zh_tw.rc"
#undef STRING
};

// Empty when there is none.
inline std::wstring WrittenText(std::uint16_t language, unsigned id) {
    for (const Text& text : kTexts) {
        if (text.language == language && text.id == id) {
            return text.text;
        }
    }
    return {};
}

// Every simplified character of the texts and labels that has a traditional form, each followed by that form.
constexpr wchar_t kChineseForms[] =
    L"与與为為买買于於仓倉价價余餘写寫删刪动動单單卖賣双雙发發变變台臺号號后後吗嗎实實对對录錄态態应應开開当當执執"
    L"报報挂掛损損换換断斷时時权權来來标標样樣没沒状狀电電确確类類约約继繼续續认認记記设設询詢该該请請败敗贴貼费費"
    L"资資转轉输輸边邊远遠长長队隊须須币幣强強种種统統触觸帐帳托託数數弃棄";

inline std::wstring InTraditionalForms(std::wstring text) {
    for (wchar_t& character : text) {
        const wchar_t* pair = kChineseForms;
        while (*pair && *pair != character) {
            pair += 2;
        }
        character = *pair ? pair[1] : character;
    }
    return text;
}
