#pragma once

#include "book/book.h"
#include "book/record_json.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// One object of the book file with its place, so that every complaint can say where.
class BookNode {
public:
    BookNode(const Json& json, std::string place) : m_json(json), m_place(std::move(place)) {}

    const Json& Value() const { return m_json; }
    const std::string& Place() const { return m_place; }

    [[noreturn]] void Refuse(const std::string& reason) const {
        throw BookFileError("", m_place.empty() ? "/" : m_place, reason);
    }

    bool Has(const char* name) const { return m_json.contains(name); }

    BookNode Member(const char* name) const {
        if (!m_json.is_object() || !m_json.contains(name)) {
            Refuse("'" + std::string(name) + "' is missing");
        }
        return {m_json[name], m_place + '/' + name};
    }

    // A misspelt member would otherwise be a default that nobody asked for.
    void Only(std::initializer_list<std::string_view> names) const {
        if (!m_json.is_object()) {
            Refuse("must be an object");
        }
        for (const auto& [name, value] : m_json.items()) {
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                Refuse("'" + name + "' is not known here");
            }
        }
    }

    // Calls `visit` for each element of the array; an absent one is empty.
    template <typename Visit>
    void Each(const char* name, Visit visit) const {
        if (!Has(name)) {
            return;
        }
        const BookNode list = Member(name);
        if (!list.m_json.is_array()) {
            list.Refuse("must be a list");
        }
        for (std::size_t i = 0; i < list.m_json.size(); ++i) {
            const BookNode element(list.m_json[i], list.m_place + '/' + std::to_string(i));
            try {
                visit(element);
            } catch (const std::invalid_argument& reason) {
                element.Refuse(reason.what());
            }
        }
    }

    std::string Text() const {
        if (!m_json.is_string()) {
            Refuse("must be a text");
        }
        return m_json.get<std::string>();
    }
    std::string Text(const char* name) const { return Member(name).Text(); }
    std::string Text(const char* name, const char* otherwise) const {
        return Has(name) ? Text(name) : otherwise;
    }

    bool Flag(const char* name, bool otherwise) const {
        if (!Has(name)) {
            return otherwise;
        }
        const BookNode member = Member(name);
        if (!member.m_json.is_boolean()) {
            member.Refuse("must be true or false");
        }
        return member.m_json.get<bool>();
    }

    double Number(const char* name) const {
        const BookNode member = Member(name);
        if (!member.m_json.is_number()) {
            member.Refuse("must be a number");
        }
        return member.m_json.get<double>();
    }

    std::uint32_t Whole(const char* name, std::uint32_t least, std::uint32_t most) const {
        const BookNode member = Member(name);
        if (!member.m_json.is_number_unsigned() || member.m_json.get<std::uint64_t>() < least ||
            member.m_json.get<std::uint64_t>() > most) {
            member.Refuse("must be a whole number of " + std::to_string(least) + " to " +
                          std::to_string(most));
        }
        return member.m_json.get<std::uint32_t>();
    }

    char Code(const char* name, char otherwise) const {
        const std::string text = Text(name, otherwise ? std::string(1, otherwise).c_str() : "");
        if (text.size() > 1) {
            Member(name).Refuse("must be one character");
        }
        return text.empty() ? '\0' : text[0];
    }

    // A code goes into its field whole or not at all, and means the same in every code page.
    template <std::size_t Width>
    void Code(const char* name, FixedText<Width>& field) const {
        SetCode(Member(name), field);
    }
    template <std::size_t Width>
    static void SetCode(const BookNode& node, FixedText<Width>& field) {
        const std::string code = node.Text();
        if (code.size() >= Width) {
            node.Refuse("'" + code + "' is longer than " + std::to_string(Width - 1));
        }
        for (const char c : code) {
            if (c <= ' ' || c > '~') {
                node.Refuse("'" + code + "' holds a character that no code may have");
            }
        }
        field.Set(code);
    }

    // "sign": "A" or "signs": ["A", "B"].
    std::vector<std::string> Signs() const {
        if (Has("sign")) {
            return {Text("sign")};
        }
        std::vector<std::string> signs;
        Member("signs");
        Each("signs", [&](const BookNode& sign) { signs.push_back(sign.Text()); });
        if (signs.empty()) {
            Refuse("'signs' is empty");
        }
        return signs;
    }

private:
    const Json& m_json;
    std::string m_place;
};
