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

// AVX-512's expansion of bytes to the places a mask marks (VBMI2), with the bit deposits (BMI2)
// that make such masks.
inline bool processorHasByteExpansion() {
    static const bool has = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
               __builtin_cpu_supports("avx512vl") != 0 &&
               __builtin_cpu_supports("avx512vbmi2") != 0 && __builtin_cpu_supports("bmi2") != 0 &&
               __builtin_cpu_supports("popcnt") != 0;
    }();
    return has;
}

} // namespace morlevant

// Builds a function of floating-point work twice, for every x86-64 processor and for those with
// fused multiply-add and rounding instructions (x86-64-v3), and calls the one the processor runs
// when the program starts: fma, floor and the like are then single instructions rather than
// library calls. The results are the same, as each such operation is exactly defined, and
// products are never fused where the code does not ask for it (ISO C++ mode).
#define MORLEVANT_FLOAT_STEPS __attribute__((target_clones("arch=x86-64-v3", "default")))
// A helper of such functions, built into each of their versions.
#define MORLEVANT_FLOAT_STEPS_HELPER __attribute__((always_inline)) inline
#else
#define MORLEVANT_FLOAT_STEPS
#define MORLEVANT_FLOAT_STEPS_HELPER inline
#endif

namespace morlevant {

// The steps by which a copy spreads bytes out (a byte inserted before some), from the plainest to
// the widest: a copy takes the widest the processor has, and a test each of them.
enum class SpreadSteps { Plain, Shuffle, Expansion };

inline SpreadSteps widestSpreadSteps() {
#ifdef MORLEVANT_X86_STEPS
    if (processorHasByteExpansion())
        return SpreadSteps::Expansion;
    if (processorHasByteShuffle())
        return SpreadSteps::Shuffle;
#endif
    return SpreadSteps::Plain;
}

} // namespace morlevant
