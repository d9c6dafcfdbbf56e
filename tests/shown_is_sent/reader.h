#pragma once

#include "shown_is_sent/hands.h"

#include <memory>

// The texts of the loaded module in its language, as they come through the system's code page.
class Texts {
public:
    explicit Texts(HMODULE module, WORD language) : m_module(module), m_language(language) {}
    std::string operator()(unsigned id) const;

private:
    HMODULE m_module;
    WORD m_language;
};

// Says from the windows of a dialog, the host's data and the record that the dialog was opened on what has to
// follow a confirm. It sees what an operator sees, and remembers what an operator remembers: which account
// was chosen last, which contract the dialog last understood.
class Reader {
public:
    virtual ~Reader() = default;
    // Right after the opening and after every step.
    virtual void Look() {}
    // Adds what follows to the sequel; whether the dialog closes then.
    virtual bool Foretell(Sequel& sequel) = 0;
    // What the windows show that cannot be true together; empty for nothing.
    virtual std::string Contradiction() const = 0;
};

std::unique_ptr<Reader> OrderReader(const View& view, int mode, const OrderRecord* order, World& world,
                                    const Texts& texts);
std::unique_ptr<Reader> FillReader(const View& view, int mode, const OrderRecord* order,
                                   const FillRecord* fill, World& world, const Texts& texts);

// How two requests differ, clock digits aside: fields with name, offset and both values. Empty when they do
// not.
std::string Difference(const Event& expected, const Event& sent);
