#pragma once

// Included, not only declared: an item is of no use without its ServerItem.
#include <rfUtils/platform/ServerItem.h>

#ifdef RFUTILS_EXTERNAL_PLATFORM

#include <ElfItem.h>

#else

#include <rfUtils/rfUtilsExport.h>

/// An instrument parameter with a floating-point value, as published over IPC.
///
/// Of an item the library needs nothing but its ServerItem. A library built with an external
/// platform (RFUTILS_EXTERNAL_PLATFORM) takes both item classes from that platform's <ElfItem.h>.
class RFUTILS_EXPORT DoubleElfItem {
public:
    /// @param server the item's user-interface side; not owned, must outlive its use, may be null
    explicit DoubleElfItem(ServerItem* server) noexcept : server_(server) {}

    /// The pointer given at construction.
    ServerItem* serverItem() const noexcept { return server_; }

private:
    ServerItem* server_;
};

/// An instrument parameter with an integer value; otherwise like DoubleElfItem. The two are
/// separate types because an integer item is bound to other formatters than a floating-point one.
class RFUTILS_EXPORT IntElfItem {
public:
    /// @param server the item's user-interface side; not owned, must outlive its use, may be null
    explicit IntElfItem(ServerItem* server) noexcept : server_(server) {}

    /// The pointer given at construction.
    ServerItem* serverItem() const noexcept { return server_; }

private:
    ServerItem* server_;
};

#endif
