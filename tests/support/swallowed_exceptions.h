#pragma once

// Every exception that the module's guard stops fails the running test: of the code that is linked into the
// test program, and of a module that it has loaded. Linked into every test program.

// While it lives, exceptions of handlers are expected and counted instead. One at a time.
class ExpectedExceptions {
public:
    ExpectedExceptions();
    ~ExpectedExceptions();
    ExpectedExceptions(const ExpectedExceptions&) = delete;
    ExpectedExceptions& operator=(const ExpectedExceptions&) = delete;

    // Stopped since the last time that this was asked.
    int Take();
};
