#pragma once

// Takes now what an exception needs beside its own object, so that one that says "no memory" finds it. For
// the calling thread; called where a thread of the host first comes to the module. No exception leaves it.
void PrepareExceptions() noexcept;
