#pragma once

// While it lives, floating point rounds to the nearest double and traps nothing, whatever the host's thread
// has set: the C and C++ libraries convert numbers with x87 instructions, which read 16777217 as 16777216
// under a precision of 24 bits. What the host has set comes back with its end, so nothing of the host may be
// called meanwhile.
class StandardArithmetic {
public:
    StandardArithmetic() {
        constexpr unsigned short kX87Double = 0x027F;
        constexpr unsigned kSseDefault = 0x1F80;
        __asm__ volatile("fnstcw %0\n\tfldcw %2\n\tstmxcsr %1\n\tldmxcsr %3"
                         : "=m"(m_x87), "=m"(m_sse)
                         : "m"(kX87Double), "m"(kSseDefault)
                         : "memory");
    }
    // What was not exact meanwhile is forgotten, or a host that traps it would be trapped now.
    ~StandardArithmetic() {
        __asm__ volatile("fnclex\n\tfldcw %0\n\tldmxcsr %1" : : "m"(m_x87), "m"(m_sse) : "memory");
    }
    StandardArithmetic(const StandardArithmetic&) = delete;
    StandardArithmetic& operator=(const StandardArithmetic&) = delete;

private:
    unsigned short m_x87;
    unsigned m_sse;
};
