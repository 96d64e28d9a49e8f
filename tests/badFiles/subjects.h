// One interface to everything that loads files: the load, its message, the content as text.
#pragma once

#include <support/messageLog.h>

#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>
#include <rfUtils/geo/veltaGEO.h>

#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <locale>
#include <map>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// An object with one of its loaders.
class Subject {
public:
    Subject() = default;
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    virtual ~Subject() = default;

    virtual bool load(const std::string& path) = 0;
    /// The message of the last load, or its lines in Qt's log.
    virtual std::string said() = 0;
    /// The content that differs from that of a new object.
    virtual std::string holds() const = 0;
    /// The same without entries that the object counts as unused.
    virtual std::string holdsInUse() const { return holds(); }
    /// Uses every other operation of the object and checks the results. The base name has a good
    /// file of each format.
    virtual void useEverything(const std::string& base) = 0;
};

/// Builds a text independent of the locale.
class Report {
public:
    Report() { out_.imbue(std::locale::classic()); }

    template <typename Value>
    void add(const char* name, Value value) {
        if (value != Value()) {
            out_ << ' ' << name << '=' << value;
        }
    }

    template <typename Value>
    Report& operator<<(const Value& value) {
        out_ << value;
        return *this;
    }

    std::string text() const { return out_.str().substr(out_.str().empty() ? 0 : 1); }

private:
    std::ostringstream out_;
};

inline std::string shortened(const std::string& text) {
    if (text.size() > 100) {
        return std::to_string(text.size()) + " characters";
    }
    std::string visible;
    for (const char c : text) {
        visible += c == '\0' ? std::string("(NUL)") : std::string(1, c);
    }
    return visible;
}

/// A new map in reused memory: allocating 16 MiB for every load would dominate the running time.
class RecycledMap {
public:
    RecycledMap() {
        if (spare().empty()) {
            map_ = std::make_unique<veltaGEO>();
            return;
        }
        map_ = std::move(spare().back());
        spare().pop_back();
        map_->~veltaGEO();
        new (map_.get()) veltaGEO();
    }
    ~RecycledMap() { spare().push_back(std::move(map_)); }
    RecycledMap(const RecycledMap&) = delete;
    RecycledMap& operator=(const RecycledMap&) = delete;

    veltaGEO& operator*() const { return *map_; }
    veltaGEO* operator->() const { return map_.get(); }

private:
    static std::vector<std::unique_ptr<veltaGEO>>& spare() {
        static std::vector<std::unique_ptr<veltaGEO>> maps;
        return maps;
    }

    std::unique_ptr<veltaGEO> map_;
};

class MapSubject : public Subject {
public:
    using Loader = bool (veltaGEO::*)(const QString&);

    explicit MapSubject(Loader loader) : loader_(loader) {}

    bool load(const std::string& path) override {
        map_->setErrMsg(QString());
        return ((*map_).*loader_)(QString::fromStdString(path));
    }
    std::string said() override { return map_->errMsg.toStdString(); }
    std::string holds() const override { return describe(false); }
    std::string holdsInUse() const override { return describe(true); }

    void useEverything(const std::string& base) override {
        veltaGEO& m = *map_;
        useTexts(m);
        float latitude = 0.0F;
        float longitude = 0.0F;
        m.utmToLatLng(500000.0F, 0.0F, 31, 0, &latitude, &longitude);
        EXPECT_EQ(latitude, 0.0F);
        EXPECT_EQ(longitude, 3.0F);
        EXPECT_EQ(m.LatLngToUTMZone(0.0F, -69.0F), 19);
        const QString name = QString::fromStdString(base);
        EXPECT_TRUE(m.loadTabFile(name + QLatin1String(".tab")));
        EXPECT_EQ(std::string(m.rasterFileName), "map.bil");
        EXPECT_TRUE(m.LoadColorTable(name));
        EXPECT_EQ(m.highRed[0], 4);
        EXPECT_TRUE(m.loadASCFile(name));
        EXPECT_EQ(m.grid[1][2], 6.0F);
        EXPECT_TRUE(m.loadHDRFile(name));
        EXPECT_EQ(m.isLoaded, 0);
        m.grid[1][2] = 0.0F;
        EXPECT_TRUE(m.loadBILFile(name));
        EXPECT_EQ(m.grid[1][2], 6.0F);
        EXPECT_EQ(m.isLoaded, 1);
        EXPECT_EQ(m.errMsg.toStdString(), "Raster file loaded");
    }

protected:
    veltaGEO& map() { return *map_; }

private:
    std::string describe(bool inUse) const {
        const veltaGEO& m = *map_;
        Report report;
        report.add("isLoaded", m.isLoaded);
        report.add("isValid", m.isValid);
        report.add("nCols", m.nCols);
        report.add("nRows", m.nRows);
        report.add("originX", m.originX);
        report.add("originY", m.originY);
        report.add("cellSize", m.cellSize);
        report.add("noData", m.noData);
        report.add("colours", m.colorCount);
        for (int i = 0; i < (inUse ? m.colorCount : 32); ++i) {
            describeColour(report, i);
        }
        report.add("utmZone", m.utmZone);
        report.add("south", m.southHemisphere);
        report.add("originLatitude", m.originLatitude);
        report.add("centralMeridian", m.centralMeridian);
        report.add("falseEasting", m.falseEasting);
        report.add("falseNorthing", m.falseNorthing);
        report.add("file", std::string(m.rasterFileName));
        for (int i = 0; i < 4; ++i) {
            if (m.controlPoint[i].x != 0.0F || m.controlPoint[i].y != 0.0F) {
                report << " point" << i << '=' << m.controlPoint[i].x << ',' << m.controlPoint[i].y;
            }
        }
        report.add("unitKind", m.unitKind);
        report.add("fileKind", m.fileKind);
        report.add("isFloat", m.isFloat);
        describeCells(report, inUse ? m.nRows : 2048);
        return report.text();
    }

    static void useTexts(veltaGEO& m) {
        const auto tokens = std::make_unique<stPaser>();
        m.makeToken(tokens.get(), "ncols 3");
        EXPECT_EQ(tokens->count, 2);
        EXPECT_EQ(m.GetFileNameExt("map.bil"), 1);
        EXPECT_EQ(m.GetFileNameExtDel(QStringLiteral("map.bil")), QStringLiteral("map"));
        m.setErrMsg(QStringLiteral("said"));
        EXPECT_EQ(m.errMsg, QStringLiteral("said"));
        EXPECT_FALSE(m.updateRasterMap());
    }

    void describeColour(Report& report, int i) const {
        const veltaGEO& m = *map_;
        std::ostringstream out;
        out.imbue(std::locale::classic());
        out << m.lowValue[i] << ' ' << m.lowRed[i] << ' ' << m.lowGreen[i] << ' ' << m.lowBlue[i]
            << '|' << m.highValue[i] << ' ' << m.highRed[i] << ' ' << m.highGreen[i] << ' '
            << m.highBlue[i];
        if (out.str() != "0 0 0 0|0 0 0 0") {
            report << " [" << out.str() << ']';
        }
    }

    void describeCells(Report& report, int rows) const {
        static const std::string zeros(2048 * sizeof(float), '\0');
        for (int row = 0; row < std::clamp(rows, 0, 2048); ++row) {
            const float* const cells = map_->grid[row];
            if (std::string_view(reinterpret_cast<const char*>(cells), zeros.size()) == zeros) {
                continue;
            }
            int end = 2048;
            while (cells[end - 1] == 0.0F) {
                --end;
            }
            report << " row" << row << '=';
            for (int column = 0; column < end; ++column) {
                report << (column == 0 ? "" : ",") << cells[column];
            }
        }
    }

    Loader loader_;
    RecycledMap map_;
};

/// Loads cells, with sizes set instead of a header.
class CellsSubject : public MapSubject {
public:
    CellsSubject() : MapSubject(&veltaGEO::loadBILFile) {}

    bool load(const std::string& path) override { return loadSized(path, 3, 2); }

    bool loadSized(const std::string& path, int columns, int rows) {
        map().nCols = columns;
        map().nRows = rows;
        map().isFloat = 1;
        map().noData = -9.0F;
        return MapSubject::load(path);
    }
};

class CatalogueSubject : public Subject {
public:
    bool load(const std::string& path) override { return list_.loadJson(path); }

    std::string said() override { return {}; }

    void useEverything(const std::string& base) override {
        EXPECT_TRUE(list_.addSubItem("used", "Label", "id", 7, 1));
        EXPECT_TRUE(list_.addFromSubItem({"used", "hidden", "Hidden", 8, 0}));
        EXPECT_EQ(list_.getSubItemIdFromOrder("used", 7), "id");
        EXPECT_EQ(list_.getSubItemIdFromLabel("used", "Hidden"), "hidden");
        EXPECT_EQ(list_.getOrderFromSubItemId("used", "ID"), 7);
        EXPECT_EQ(list_.getLabelFromSubItemId("used", "Id"), "Label");
        std::string id;
        int code = 0;
        EXPECT_TRUE(list_.getSubItemEnumDataFromId("used", "id", id, code));
        EXPECT_FALSE(list_.getSubItemEnumDataFromId("used", "hidden", id, code));
        EXPECT_TRUE(list_.deleteSubItemById("used", "id"));
        EXPECT_TRUE(list_.deleteItemById("used"));
        EXPECT_FALSE(list_.deleteItemById("used"));
        EXPECT_TRUE(list_.loadJson(base + ".json"));
        EXPECT_EQ(list_.getOrderFromSubItemId("item", "auto"), 1);
        testing::internal::CaptureStdout();
        EXPECT_TRUE(list_.checkAllSubitem());
        EXPECT_NE(testing::internal::GetCapturedStdout().find(R"("AUTO" "item")"),
                  std::string::npos);
    }

    std::string holds() const override {
        Report report;
        for (const char* itemId : {"item", "second"}) {
            std::unordered_map<std::string, subItem> choices;
            list_.getSubItemsById(itemId, choices);
            const std::map<std::string, subItem> sorted(choices.begin(), choices.end());
            for (const auto& [key, choice] : sorted) {
                report << ' ' << choice.itemId << '.' << shortened(key) << '='
                       << shortened(choice.id) << ',' << shortened(choice.label) << ','
                       << choice.enumValue << ',' << choice.dispSeq;
            }
        }
        return report.text();
    }

private:
    subItemList list_;
};

class SetupsSubject : public Subject {
public:
    bool load(const std::string& path) override {
        before_ = count();
        log_.take();
        return list_.loadJson(QString::fromStdString(path));
    }

    std::string said() override {
        std::string lines;
        for (const LoggedMessage& message : log_.take()) {
            lines += (lines.empty() ? "" : " ") + message.text;
        }
        return lines;
    }

    void useEverything(const std::string& base) override {
        const int before = count();
        EXPECT_TRUE(list_.setupId(-1).isNull());
        EXPECT_TRUE(list_.setupLabel(before).isNull());
        EXPECT_TRUE(list_.loadJson(QString::fromStdString(base + ".json")));
        EXPECT_EQ(list_.setupId(before), QStringLiteral("auto"));
        EXPECT_EQ(list_.setupLabel(before), QStringLiteral("Auto"));
    }

    /// The setups that the last load appended.
    std::string holds() const override {
        const int added = count() - before_;
        if (added > 3) {
            return std::to_string(added) + " setups";
        }
        Report report;
        for (int i = before_; i < before_ + added; ++i) {
            report << ' ' << shortened(list_.setupId(i).toStdString()) << ','
                   << shortened(list_.setupLabel(i).toStdString());
        }
        return report.text();
    }

private:
    int count() const {
        int setups = 0;
        while (!list_.setupId(setups).isNull()) {
            ++setups;
        }
        return setups;
    }

    MessageLog log_;
    ResultSetup list_;
    int before_ = 0;
};
