#pragma once

#include <cstddef>
#include <cstdint>

// Something that holds while a call runs and is put back when its scope is left. It is noted beside the stack
// as well: a structured exception that the host raises in one of its operations and catches behind the module
// passes over the module's frames without running a destructor. What such calls left is put back, the
// innermost first, when the next note is made, so at the next message or operation at the latest. Lives on
// the stack of the thread of the windows.
class CallNote {
public:
    using PutBack = void (*)(void* target, std::intptr_t former);

    // A null `putBack` only watches the target.
    CallNote(void* target, PutBack putBack, std::intptr_t former = 0);
    ~CallNote();
    CallNote(const CallNote&) = delete;
    CallNote& operator=(const CallNote&) = delete;

    // Null once the target is gone (see ForgetTarget).
    void* Target() const;
    // Nothing is put back any more.
    void Drop();

    // The target is being destroyed: nothing that is noted of it is put back.
    static void ForgetTarget(const void* target);
    // Puts back what calls left whose frames are gone from this stack. `frame`: of a function that the host
    // or the system has called and that has made no notes yet; whatever lies below it is over.
    static void PutBackAbandoned(const void* frame);
    // Puts back everything: no call of the module can be running any more.
    static void PutBackAll();
    // True when calls are nested so deeply that the stack is about to end.
    static bool NearlyFull();

private:
    std::size_t m_index;
};
