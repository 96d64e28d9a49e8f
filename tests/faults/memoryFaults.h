#pragma once

/// Lets allocations of the whole program fail while it lives: malloc and its kin, and with them
/// operator new and Qt's containers. One at a time, in a program without threads.
class MemoryFaults {
public:
    enum class Kind {
        Once,       ///< one allocation fails, as where memory is short for a moment
        FromThenOn  ///< every later one too
    };

    /// @param number of the first allocation that fails, from 1
    MemoryFaults(long number, Kind kind);
    ~MemoryFaults();
    MemoryFaults(const MemoryFaults&) = delete;
    MemoryFaults& operator=(const MemoryFaults&) = delete;

    /// Whether an allocation failed since the construction.
    bool happened() const;

    /// Blocks that the program holds now.
    static long held();

    /// No allocation fails, nor counts, while such an object lives.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };
};
