#include "controls/dialog_template.h"

#include <cstdint>

namespace {

// Writes little-endian words one after the other.
class TemplateWriter {
public:
    void Word(unsigned value) {
        m_bytes.push_back(static_cast<std::byte>(value));
        m_bytes.push_back(static_cast<std::byte>(value >> 8));
    }
    void DoubleWord(DWORD value) {
        Word(LOWORD(value));
        Word(HIWORD(value));
    }
    // UTF-16 with its terminator.
    void Text(const std::string& ansi) {
        std::wstring wide(ansi.size(), L'\0');
        const int length = MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()),
                                               wide.data(), static_cast<int>(wide.size()));
        wide.resize(static_cast<std::size_t>(length));
        for (const wchar_t character : wide) {
            Word(character);
        }
        Word(0);
    }
    void Place(const RECT& place) {
        Word(static_cast<unsigned>(place.left));
        Word(static_cast<unsigned>(place.top));
        Word(static_cast<unsigned>(place.right - place.left));
        Word(static_cast<unsigned>(place.bottom - place.top));
    }
    void AlignToDoubleWord() { m_bytes.resize((m_bytes.size() + 3) / 4 * 4); }
    std::vector<std::byte> Take() { return std::move(m_bytes); }

private:
    std::vector<std::byte> m_bytes;
};

}  // namespace

std::vector<std::byte> CXDialogTemplate::Build() const {
    TemplateWriter writer;
    writer.DoubleWord(m_style);
    writer.DoubleWord(0);  // no extended style
    writer.Word(static_cast<unsigned>(m_items.size()));
    writer.Place({0, 0, m_size.cx, m_size.cy});
    writer.Word(0);  // no menu
    writer.Word(0);  // the standard dialog class
    writer.Text(m_title);
    for (const CXDialogItem& item : m_items) {
        writer.AlignToDoubleWord();
        writer.DoubleWord(item.style);
        writer.DoubleWord(0);
        writer.Place(item.place);
        writer.Word(item.id);
        writer.Text(item.className);
        writer.Text(item.text);
        writer.Word(0);  // no creation data
    }
    return writer.Take();
}
