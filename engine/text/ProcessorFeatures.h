#pragma once

// Wider steps where the processor has them, chosen when the program runs: the program is built
// for every x86-64 processor. Code for such steps is compiled where MORLEVANT_X86_STEPS is set,
// in functions marked with the instructions they use, and called only when these say so.
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define MORLEVANT_X86_STEPS 1

namespace morlevant {

inline bool processorHasAvx2() {
    static const bool has = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("avx2") != 0;
    }();
    return has;
}

// SSSE3's byte shuffle, with the population count that goes with it.
inline bool processorHasByteShuffle() {
    static const bool has = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("ssse3") != 0 && __builtin_cpu_supports("popcnt") != 0;
    }();
    return has;
}

} // namespace morlevant

#endif
