#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

namespace {

TEST(Layout, FieldsStandInTheirDeclaredOrder) {
    const struct {
        const char* name;
        std::size_t offset;
        std::size_t size;
    } kFields[] = {
#define FIELD(name) {#name, offsetof(veltaGEO, name), sizeof(veltaGEO::name)}
        FIELD(isLoaded),
        FIELD(isValid),
        FIELD(nCols),
        FIELD(nRows),
        FIELD(originX),
        FIELD(originY),
        FIELD(cellSize),
        FIELD(noData),
        FIELD(colorCount),
        FIELD(lowValue),
        FIELD(highValue),
        FIELD(lowRed),
        FIELD(lowGreen),
        FIELD(lowBlue),
        FIELD(highRed),
        FIELD(highGreen),
        FIELD(highBlue),
        FIELD(utmZone),
        FIELD(southHemisphere),
        FIELD(originLatitude),
        FIELD(centralMeridian),
        FIELD(falseEasting),
        FIELD(falseNorthing),
        FIELD(rasterFileName),
        FIELD(controlPoint),
        FIELD(unitKind),
        FIELD(fileKind),
        FIELD(isFloat),
        FIELD(grid)};
#undef FIELD
    std::size_t expected = 0;
    for (const auto& field : kFields) {
        EXPECT_EQ(field.offset, expected) << field.name << ": nothing lies between the fields";
        expected = field.offset + field.size;
    }
    EXPECT_GE(offsetof(veltaGEO, errMsg), expected);
    EXPECT_LE(sizeof(veltaGEO), expected + sizeof(QString) + alignof(QString));
}

TEST(Layout, FieldsHaveTheirTypesAndShapes) {
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::grid), float[2048][2048]>));
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::lowValue), float[32]>));
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::highBlue), std::int32_t[32]>));
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::rasterFileName), char[192]>));
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::controlPoint), veltaGEO::ControlPoint[4]>));
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::isLoaded), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(veltaGEO::errMsg), QString>));
    EXPECT_TRUE((std::is_same_v<decltype(stPaser::token), char[1024][64]>));
    EXPECT_EQ(offsetof(stPaser, count), 1024U * 64U);
    EXPECT_EQ(sizeof(stPaser), 1024U * 64U + 4U);
    EXPECT_FALSE(std::is_polymorphic_v<veltaGEO>);
}

TEST(Layout, TheConstructorZeroFillsEverythingAndSaysNothing) {
    const auto storage = std::make_unique<std::byte[]>(sizeof(veltaGEO));
    std::memset(storage.get(), 0xAB, sizeof(veltaGEO));
    auto* map = new (storage.get()) veltaGEO;
    const auto* bytes = reinterpret_cast<const unsigned char*>(map);
    std::size_t set = 0;
    for (std::size_t i = 0; i < offsetof(veltaGEO, grid) + sizeof(veltaGEO::grid); ++i) {
        set += bytes[i] != 0 ? 1 : 0;
    }
    EXPECT_EQ(set, 0U);
    EXPECT_TRUE(map->errMsg.isEmpty());
    map->~veltaGEO();
}

TEST(Messages, SetErrMsgReplacesTheLastMessage) {
    const auto map = std::make_unique<veltaGEO>();
    map->setErrMsg(QStringLiteral("one"));
    EXPECT_EQ(map->errMsg, QStringLiteral("one"));
    map->setErrMsg(QStringLiteral("µ two"));
    EXPECT_EQ(map->errMsg, QStringLiteral("µ two"));
    map->setErrMsg(QString());
    EXPECT_TRUE(map->errMsg.isEmpty());
}

TEST(Messages, UpdateRasterMapDoesNothing) {
    const auto map = std::make_unique<veltaGEO>();
    map->isLoaded = 1;
    map->setErrMsg(QStringLiteral("kept"));
    EXPECT_FALSE(map->updateRasterMap());
    EXPECT_EQ(map->isLoaded, 1);
    EXPECT_EQ(map->errMsg, QStringLiteral("kept"));
}

}  // namespace
