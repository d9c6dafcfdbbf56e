#pragma once

// Gives a variable another value until the end of the scope, however it is left.
template <typename Value>
class ScopedValue {
public:
    ScopedValue(Value& variable, Value meanwhile) : m_variable(variable), m_former(variable) {
        m_variable = meanwhile;
    }
    ~ScopedValue() { m_variable = m_former; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    Value& m_variable;
    Value m_former;
};
