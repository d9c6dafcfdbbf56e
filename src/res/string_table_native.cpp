// The string table of a native build: the same files that the resource compiler reads, compiled in as UTF-8.
#include <cstdint>
#include <span>

#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

namespace {

struct Text {
    unsigned id;
    const char* text;
};

#define STRING(id, text) {id, text},
constexpr Text kEnglishTexts[] = {
#include "res/strings_en.rc"
};
constexpr Text kSimplifiedTexts[] = {
#include "res/strings_zh_cn.rc"
};
constexpr Text kTraditionalTexts[] = {
#include "res/strings_zh_tw.rc"
};
#undef STRING

std::span<const Text> TextsOf(std::uint16_t language) {
    switch (language) {
        case kSimplifiedChinese:
            return kSimplifiedTexts;
        case kTraditionalChinese:
            return kTraditionalTexts;
        default:
            return kEnglishTexts;
    }
}

}  // namespace

std::string& LoadResString(std::string& out, unsigned id) {
    out.clear();
    const auto texts = TextsOf(g_wResLanguage);
    // The files list their entries without a gap, so the place of an id is known.
    const unsigned guess = id - texts.front().id;
    if (guess < texts.size() && texts[guess].id == id) return out = texts[guess].text;
    for (const Text& text : texts)
        if (text.id == id) return out = text.text;
    return out;
}
