#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

// A compiled extended dialog template, taken apart.
struct DialogTemplate {
    struct Control {
        unsigned id;
        DWORD style;
        short x, y, width, height;
        std::wstring type;  // window class name, or "#" and the number of a predefined one
        std::wstring text;
    };
    DWORD style = 0;
    short width = 0, height = 0;
    std::wstring caption;
    std::vector<Control> controls;

    const Control* Find(unsigned id) const {
        for (const Control& control : controls)
            if (control.id == id) return &control;
        return nullptr;
    }
};

class DialogTemplateReader {
public:
    explicit DialogTemplateReader(const void* data)
        : m_start(static_cast<const std::uint8_t*>(data)), m_at(m_start) {}

    DialogTemplate Read() {
        DialogTemplate dialog;
        m_at += 12;  // version, signature, help id, extended style
        dialog.style = Take<DWORD>();
        const auto count = Take<WORD>();
        m_at += 4;  // position
        dialog.width = Take<short>();
        dialog.height = Take<short>();
        NameOrNumber();  // menu
        NameOrNumber();  // class
        dialog.caption = NameOrNumber();
        m_at += 6;  // point size, weight, slant, character set
        NameOrNumber();
        for (unsigned i = 0; i < count; ++i) dialog.controls.push_back(ReadControl());
        return dialog;
    }

private:
    DialogTemplate::Control ReadControl() {
        m_at += (4 - (m_at - m_start) % 4) % 4;
        m_at += 8;  // help id, extended style
        DialogTemplate::Control control;
        control.style = Take<DWORD>();
        control.x = Take<short>();
        control.y = Take<short>();
        control.width = Take<short>();
        control.height = Take<short>();
        control.id = Take<DWORD>();
        control.type = NameOrNumber();
        control.text = NameOrNumber();
        m_at += Take<WORD>();  // creation data
        return control;
    }

    template <typename Value>
    Value Take() {
        Value value;
        memcpy(&value, m_at, sizeof value);
        m_at += sizeof value;
        return value;
    }

    std::wstring NameOrNumber() {
        std::wstring text;
        wchar_t first = Take<wchar_t>();
        if (first == 0xFFFF) return L"#" + std::to_wstring(Take<WORD>());
        for (; first; first = Take<wchar_t>()) text += first;
        return text;
    }

    const std::uint8_t* m_start;
    const std::uint8_t* m_at;
};
