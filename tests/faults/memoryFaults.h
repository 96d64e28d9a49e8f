#pragma once

/// Makes allocations of the whole program fail while it lives: malloc and its relatives, hence
/// operator new and Qt's containers. One at a time, in a single-threaded program.
class MemoryFaults {
public:
    enum class Kind {
        Once,       ///< one allocation fails
        FromThenOn  ///< all later ones fail too
    };

    /// @param number of the first allocation that fails, from 1
    MemoryFaults(long number, Kind kind);
    ~MemoryFaults();
    MemoryFaults(const MemoryFaults&) = delete;
    MemoryFaults& operator=(const MemoryFaults&) = delete;

    /// Whether an allocation failed since the construction.
    bool happened() const;

    /// Number of allocated blocks.
    static long held();

    /// While it lives, no allocation fails or is counted.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };
};
