#pragma once

#include <functional>

// Of this process, and of this thread with all children and message windows.
int CountGdiObjects();
int CountWindows();

// Repeats a use and expects that neither windows nor GDI objects stay behind. Returns the bytes of heap that
// each round kept. The environment's EMENDO_CYCLES sets another number of rounds.
long long KeptByEach(const std::function<void()>& use, int rounds = 100);
