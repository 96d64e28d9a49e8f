#pragma once

// Not just declared: users of an item call its ServerItem.
#include <rfUtils/platform/ServerItem.h>

#ifdef RFUTILS_EXTERNAL_PLATFORM

#include <ElfItem.h>

#else

#include <rfUtils/rfUtilsExport.h>

/// An instrument parameter with a floating-point value, as published over IPC.
///
/// The library uses nothing of an item but its ServerItem. A library built with an external
/// platform (RFUTILS_EXTERNAL_PLATFORM) takes both item classes from that platform's <ElfItem.h>.
class RFUTILS_EXPORT DoubleElfItem {
public:
    /// @param server the item's user-interface side; not owned, must outlive its use, may be null
    explicit DoubleElfItem(ServerItem* server) noexcept : server_(server) {}

    /// @return the pointer given at construction
    ServerItem* serverItem() const noexcept { return server_; }

private:
    ServerItem* server_;
};

/// An instrument parameter with an integer value; otherwise like DoubleElfItem. The types differ
/// because integer items are bound to other formatters.
class RFUTILS_EXPORT IntElfItem {
public:
    /// @param server the item's user-interface side; not owned, must outlive its use, may be null
    explicit IntElfItem(ServerItem* server) noexcept : server_(server) {}

    /// @return the pointer given at construction
    ServerItem* serverItem() const noexcept { return server_; }

private:
    ServerItem* server_;
};

#endif
