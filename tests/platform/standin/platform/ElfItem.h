#pragma once

class ServerItem;

class ElfItem {
public:
    explicit ElfItem(ServerItem* server) : server_(server) {}
    ServerItem* serverItem() const { return server_; }

private:
    ServerItem* server_;
};

class DoubleElfItem : public ElfItem {
    using ElfItem::ElfItem;
};

class IntElfItem : public ElfItem {
    using ElfItem::ElfItem;
};
