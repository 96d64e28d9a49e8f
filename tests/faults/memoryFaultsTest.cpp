// Makes each allocation of each operation fail in turn: once, and from then on. std::bad_alloc
// reaches the caller; the object is in the state that its header names; nothing leaks; everything
// works again.
//
// Three parts of Qt 5.15 are excluded, since they end the process where memory runs out: the JSON
// parser, which throws through noexcept functions; message handlers, which ~QDebug calls; and
// QTextStream, which decodes cells under codecs other than ISO 8859-1. Here the parser's
// allocations never fail, the handler makes none, and cells are read as bytes.
#include "memoryFaults.h"

#include <badFiles/formats.h>
#include <support/deadline.h>
#include <support/scopedCodec.h>
#include <support/tempFiles.h>
#include <trace/markerData.h>

#include <rfUtils/detail/qtVersion.h>
#include <rfUtils/initial/itemInitial.h>
#include <rfUtils/platform/ElfItem.h>
#include <rfUtils/platform/ServerItem.h>
#include <rfUtils/platform/VemoJsonDocument.h>
#include <rfUtils/presentation/rfUtils.h>
#include <rfUtils/units/HMath.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <dlfcn.h>

/// Replaces Qt's own, which it calls.
QJsonDocument QJsonDocument::fromJson(const QByteArray& json, QJsonParseError* error) {
    using Parser = QJsonDocument (*)(const QByteArray&, QJsonParseError*);
    const MemoryFaults::Pause pause;
    static const auto parse = reinterpret_cast<Parser>(
        dlsym(RTLD_NEXT, "_ZN13QJsonDocument8fromJsonERK10QByteArrayP15QJsonParseError"));
    return parse(json, error);
}

namespace {

using States = std::set<std::string>;

/// One operation on an object of its own.
struct Trial {
    std::function<void()> run;
    /// The content of the object, as text.
    std::function<std::string()> state;
};

struct Operation {
    const char* name;
    std::function<Trial()> make;
    /// The states besides the previous one that the operation may leave when memory runs out.
    States between = {};
};

bool runsOutOfMemory(const Trial& trial, long number, MemoryFaults::Kind kind, bool& happened) {
    const MemoryFaults faults(number, kind);
    bool thrown = false;
    try {
        trial.run();
    } catch (const std::bad_alloc&) {
        thrown = true;
    }
    happened = faults.happened();
    return thrown;
}

/// Makes the allocation with this number fail.
/// @return false if the operation makes fewer
bool survives(const Operation& operation, long number, MemoryFaults::Kind kind) {
    const Trial trial = operation.make();
    const std::string before = trial.state();
    bool happened = false;
    const bool thrown = runsOutOfMemory(trial, number, kind, happened);
    if (!happened) {
        return false;
    }
    EXPECT_TRUE(thrown);
    const std::string now = trial.state();
    EXPECT_TRUE(now == before || operation.between.count(now) == 1) << now;
    EXPECT_NO_THROW(trial.run());
    return true;
}

/// @return number of allocations of the operation
long expectToSurviveEveryFailure(const Operation& operation) {
    {
        const Trial trial = operation.make();  // one-time initialisation, as the buffer of stdout
        trial.run();
        trial.state();
    }
    long number = 0;
    for (const auto kind : {MemoryFaults::Kind::Once, MemoryFaults::Kind::FromThenOn}) {
        SCOPED_TRACE(std::string(operation.name) +
                     (kind == MemoryFaults::Kind::Once ? ", once" : ", from then on"));
        for (number = 1;; ++number) {
            const long held = MemoryFaults::held();
            const bool more = survives(operation, number, kind);
            EXPECT_EQ(MemoryFaults::held(), held) << "allocation " << number;
            if (!more) {
                break;
            }
        }
    }
    return number - 1;
}

void expectToSurviveEveryFailure(const std::vector<Operation>& operations) {
    for (const Operation& operation : operations) {
        EXPECT_GT(expectToSurviveEveryFailure(operation), 0) << operation.name;
    }
}

/// An operation that changes no state.
template <typename Run>
Operation stateless(const char* name, Run run) {
    return {name, [run] { return Trial{[run] { run(); }, [] { return std::string(); }}; }};
}

class MemoryFaultsTest : public testing::Test {
protected:
    MemoryFaultsTest() {
        handler_ =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    ~MemoryFaultsTest() override { qInstallMessageHandler(handler_); }

    TempFiles files_;

private:
    Deadline deadline_{600};
    QtMessageHandler handler_;
};

// Maps ------------------------------------------------------------------------------------------

const std::string kBefore = "ncols 3\nnrows 2\nNODATA_value -9\n1 2 3\n4 5 6\n";
const std::string kAfter = "ncols 4\nnrows 1\nNODATA_value -8\n7 8 9 10\n";

/// Loads a second file into a map.
Operation mapLoad(const char* name, MapSubject::Loader loader, const std::string& first,
                  const std::string& second, const States& between) {
    return {name,
            [=] {
                const auto map = std::make_shared<MapSubject>(loader);
                map->load(first);
                return Trial{[=] { map->load(second); }, [=] { return map->holdsInUse(); }};
            },
            between};
}

TEST_F(MemoryFaultsTest, OfTextMapsLeaveTheOldMapOrTheNewOne) {
    const std::string first = files_.write("first.asc", kBefore);
    const std::string second = files_.write("second.asc", kAfter);
    files_.write("second.clr", "0 1 2 3\n10 4 5 6\n");
    const std::string defaults = " colours=1 [-9999 0 0 0|9999 0 0 0]";
    const std::string colours = " colours=1 [0 1 2 3|10 4 5 6]";
    const std::string oldMap = " nCols=3 nRows=2 noData=-9" + defaults + " row0=1,2,3 row1=4,5,6";
    const std::string newMap = "isLoaded=1 isValid=1 nCols=4 nRows=1 noData=-8";
    expectToSurviveEveryFailure(
        {mapLoad("ASC", &veltaGEO::loadASCFile, first, second,
                 {"isValid=1" + oldMap, newMap + defaults + " row0=7,8,9,10",
                  newMap + colours + " row0=7,8,9,10"})});
}

TEST_F(MemoryFaultsTest, OfHeadersColoursAndTabFilesLeaveWhatWasHeld) {
    const std::string header = files_.write("first.hdr", kHdr.good);
    const std::string otherHeader = files_.write("second.hdr", "NCOLS 7\nPIXELTYPE INT\n");
    const std::string colours = files_.write("first.clr", kClr.good);
    const std::string otherColours = files_.write("second.clr", "5 6 7 8\n9 9 9 9\n");
    const std::string tab = files_.write("first.tab", kTab.good);
    const std::string otherTab = files_.write("second.tab", "File \"other.asc\"\n");
    expectToSurviveEveryFailure(
        {mapLoad("HDR", &veltaGEO::loadHDRFile, header, otherHeader, {}),
         mapLoad("CLR", &veltaGEO::LoadColorTable, colours, otherColours,
                 {"colours=1 [-9999 0 0 0|9999 4 5 6]"}),  // the default table
         mapLoad("TAB", &veltaGEO::loadTabFile, tab, otherTab, {})});
}

TEST_F(MemoryFaultsTest, OfCellsLeaveTheOldMapOrTheNewOne) {
    const ScopedCodec codec("ISO 8859-1");
    const std::string first = files_.write("first.bil", bytesOf({1, 2, 3, 4, 5, 6}));
    const std::string second = files_.write("second.bil", bytesOf({2, 2, 2, 3, 3, 3}));
    expectToSurviveEveryFailure(
        {{"BIL",
          [=] {
              const auto cells = std::make_shared<CellsSubject>();
              cells->load(first);
              return Trial{[=] { cells->load(second); }, [=] { return cells->holdsInUse(); }};
          },
          {kLoaded + " nCols=3 nRows=2 noData=-9" + kDefault +
           " isFloat=1 row0=2,2,2 row1=3,3,3"}}});
}

// Catalogues ------------------------------------------------------------------------------------

/// Too long for the small-string optimisation.
const std::string kItem = "an item id that needs memory of its own";
const std::string kOther = "another item id that needs memory of its own";
const std::string kChoice = "a choice id that needs memory of its own";
const std::string kLabel = "a label that needs memory of its own";

std::string choicesOf(const subItemList& list, const std::string& itemId) {
    std::unordered_map<std::string, subItem> choices;
    if (!list.getSubItemsById(itemId, choices)) {
        return "none;";
    }
    std::set<std::string> lines;
    for (const auto& [key, choice] : choices) {
        lines.insert(key + '=' + choice.itemId + ',' + choice.id + ',' + choice.label + ',' +
                     std::to_string(choice.enumValue) + ',' + std::to_string(choice.dispSeq) + ';');
    }
    std::string text = "item:";
    for (const std::string& line : lines) {
        text += line;
    }
    return text;
}

/// An operation on a catalogue of one choice.
template <typename Run>
Operation onCatalogue(const char* name, Run run) {
    return {name, [run] {
                const auto list = std::make_shared<subItemList>();
                list->addSubItem(kItem, kLabel, kChoice, 1, 2);
                return Trial{[=] { run(*list); },
                             [=] { return choicesOf(*list, kItem) + choicesOf(*list, kOther); }};
            }};
}

TEST_F(MemoryFaultsTest, OfCatalogueEditsAndQueriesChangeNothing) {
    const subItem replacement{kItem, kChoice, kLabel + '!', 3, 4};
    std::vector<Operation> operations = {
        onCatalogue("choice of a new item",
                    [](subItemList& list) { list.addSubItem(kOther, kLabel, kChoice, 5, 6); }),
        onCatalogue("another choice",
                    [](subItemList& list) { list.addSubItem(kItem, kLabel, kChoice + '2', 5, 6); }),
        onCatalogue("a choice again", [=](subItemList& list) { list.addFromSubItem(replacement); }),
        onCatalogue("id by code", [](subItemList& list) { list.getSubItemIdFromOrder(kItem, 1); }),
        onCatalogue("id by label",
                    [](subItemList& list) { list.getSubItemIdFromLabel(kItem, kLabel); }),
        onCatalogue("code by id",
                    [](subItemList& list) { list.getOrderFromSubItemId(kItem, kChoice); }),
        onCatalogue("label by id",
                    [](subItemList& list) { list.getLabelFromSubItemId(kItem, kChoice); }),
        onCatalogue("id and code by id",
                    [](subItemList& list) {
                        std::string id;
                        int code = 0;
                        list.getSubItemEnumDataFromId(kItem, kChoice, id, code);
                    }),
        onCatalogue("deletion of a choice",
                    [](subItemList& list) { list.deleteSubItemById(kItem, kChoice); })};
    expectToSurviveEveryFailure(operations);
}

TEST_F(MemoryFaultsTest, OfTheQueryForAnItemLeaveTheResultEmpty) {
    using Choices = std::unordered_map<std::string, subItem>;
    subItemList list;
    for (int i = 0; i < 5; ++i) {
        list.addSubItem(kItem, kLabel, kChoice + std::to_string(i), i, 1);
    }
    const auto out = std::make_shared<Choices>();
    expectToSurviveEveryFailure({{"getSubItemsById",
                                  [&] {
                                      out->clear();
                                      out->emplace("old", subItem{});
                                      return Trial{[&] { list.getSubItemsById(kItem, *out); },
                                                   [&] {
                                                       return out->count("old") == 1 ? "old"
                                                              : out->empty()         ? "empty"
                                                                                     : "filled";
                                                   }};
                                  },
                                  {"empty"}}});
    // no old value is left, whichever allocation fails
    bool happened = true;
    for (long number = 1; happened; ++number) {
        out->clear();
        out->emplace("old", subItem{});
        runsOutOfMemory({[&] { list.getSubItemsById(kItem, *out); }, {}}, number,
                        MemoryFaults::Kind::Once, happened);
        EXPECT_EQ(out->count("old"), 0U) << "allocation " << number;
    }
    // an unknown item changes and allocates nothing
    out->clear();
    out->emplace("old", subItem{});
    runsOutOfMemory({[&] { list.getSubItemsById(kOther, *out); }, {}}, 1, MemoryFaults::Kind::Once,
                    happened);
    EXPECT_FALSE(happened);
    EXPECT_EQ(out->count("old"), 1U);
}

const char kTwoItems[] = R"({
    "a first item id that needs memory": [
        {"label": "a label that needs memory", "id": "id 1 that needs memory", "enum": 1, "dispSeq": 2},
        {"label": "a label that needs memory", "id": "id 2 that needs memory", "enum": 3, "dispSeq": 4}],
    "b second item id that needs memory": [
        {"label": "a label that needs memory", "id": "id 1 that needs memory", "enum": 5, "dispSeq": 6}]})";

TEST_F(MemoryFaultsTest, OfACatalogueFileLeaveWholeChoices) {
    const std::string first = "a first item id that needs memory";
    const std::string second = "b second item id that needs memory";
    const auto line = [](const std::string& item, const std::string& number, const char* codes) {
        return "ID " + number + " THAT NEEDS MEMORY=" + item + ",id " + number +
               " that needs memory,a label that needs memory," + codes + ';';
    };
    const std::string held = "ID 0=" + first + ",id 0,held before,7,8;";
    const std::string one = "item:" + held + line(first, "1", "1,2");
    const std::string two = one + line(first, "2", "3,4");
    const std::string path = files_.write("items.json", kTwoItems);
    expectToSurviveEveryFailure(
        {{"loadJson",
          [=] {
              const auto list = std::make_shared<subItemList>();
              list->addSubItem(first, "held before", "id 0", 7, 8);
              return Trial{[=] { EXPECT_TRUE(list->loadJson(path)); },
                           [=] { return choicesOf(*list, first) + choicesOf(*list, second); }};
          },
          {one + "none;", two + "none;"}}});
}

std::string setupsOf(const ResultSetup& list) {
    std::string text;
    for (int i = 0; !list.setupId(i).isNull(); ++i) {
        text += list.setupId(i).toStdString() + list.setupLabel(i).toStdString() + ' ';
    }
    return text;
}

TEST_F(MemoryFaultsTest, OfASetupFileLeaveTheSetupsUpToOne) {
    const QString path = QString::fromStdString(files_.write(
        "setups.json",
        R"({"a": [{"id": "x", "label": "X"}, {"id": "y"}, {"id": "z", "label": "\u005a"}]})"));
    expectToSurviveEveryFailure({{"loadJson",
                                  [=] {
                                      const auto list = std::make_shared<ResultSetup>();
                                      return Trial{[=] { EXPECT_TRUE(list->loadJson(path)); },
                                                   [=] { return setupsOf(*list); }};
                                  },
                                  {"xX ", "xX zZ "}}});
}

TEST_F(MemoryFaultsTest, OfAJsonFileLeaveAnEmptyObject) {
    const QString good = QString::fromStdString(files_.write("good.json", kTwoItems));
    const QString bad = QString::fromStdString(files_.write("bad.json", "{"));
    const QString none = QString::fromStdString(files_.path("none.json"));
    for (const QString& path : {good, bad, none}) {
        expectToSurviveEveryFailure(
            {{"readFile",
              [=] {
                  const auto document = std::make_shared<VemoJsonDocument>();
                  document->readFile(good);
                  return Trial{[=] { document->readFile(path); },
                               [=] {
                                   return std::to_string(document->object().size()) +
                                          document->errorString().toStdString();
                               }};
              },
              {"0"}}});
    }
}

// Initial values --------------------------------------------------------------------------------

std::string tableText(const itemInitial& table) {
    testing::internal::CaptureStdout();
    table.checkInitialVal();
    return testing::internal::GetCapturedStdout();
}

/// An operation on a table of two entries.
template <typename Run>
Operation onTable(const char* name, Run run) {
    return {name, [run] {
                const auto table = std::make_shared<itemInitial>();
                table->setInitialVal(kItem, kLabel);
                table->setInitialVal("short", "text");
                return Trial{[=] { run(*table); }, [=] { return tableText(*table); }};
            }};
}

TEST_F(MemoryFaultsTest, OfInitialValuesChangeNoEntryInUse) {
    const initialValue_t entry{kOther, 3, 1, 2.0, kLabel};
    expectToSurviveEveryFailure(
        {onTable("integer", [](itemInitial& table) { table.setInitialVal(kOther, 1); }),
         onTable("double", [](itemInitial& table) { table.setInitialVal(kOther, 1.0); }),
         onTable("text", [](itemInitial& table) { table.setInitialVal(kOther, kLabel); }),
         onTable("entry", [=](itemInitial& table) { table.addInitialVal(entry); }),
         onTable("fill", [=](itemInitial& table) { table.fillInitialVal(1, entry); }),
         onTable("copy", [](itemInitial& table) { table.copyInitialVal(0, 1); }),
         onTable("modify",
                 [](itemInitial& table) { table.modifyInitialVal("short", kLabel + kLabel); })});
}

// Traces ----------------------------------------------------------------------------------------

TEST_F(MemoryFaultsTest, OfTracesLeaveTheRingAsItWas) {
    std::vector<double> longer{3.0, 4.0, 5.0};
    std::vector<Operation> operations;
    for (const auto& [name, push] : {std::pair{"push_back", &traceRssiBuffer::push_back},
                                     std::pair{"push_front", &traceRssiBuffer::push_front}}) {
        for (const int capacity : {2, 3}) {  // a full ring and one with room
            operations.push_back(
                {name, [push = push, capacity, &longer] {
                     const auto ring = std::make_shared<traceRssiBuffer>(capacity, 4);
                     std::vector<double> first{1.0};
                     std::vector<double> second{2.0, 2.5};
                     ring->push_back(first);
                     ring->push_back(second);
                     return Trial{[=, &longer] { (*ring.*push)(longer); },
                                  [=] {
                                      return testing::PrintToString(
                                          std::pair(pointData(*ring, 0), pointData(*ring, 1)));
                                  }};
                 }});
        }
    }
    operations.push_back(stateless("construction", [] { const traceRssiBuffer ring(10, 10); }));
    expectToSurviveEveryFailure(operations);
}

TEST_F(MemoryFaultsTest, CannotHappenInAMarkerRing) {
    traceRssiBuffer ring(2, 2);
    std::vector<double> trace{1.0};
    ring.push_back(trace);
    bool happened = true;
    const auto use = [&] {
        ring.appendMarkerPower(0, 1.0);
        ring.resetMarkerBuffer();
        ring.calcMarkerPower(0, 0);
    };
    EXPECT_FALSE(runsOutOfMemory({use, {}}, 1, MemoryFaults::Kind::FromThenOn, happened));
    EXPECT_FALSE(happened);
    EXPECT_EQ(markerData(ring, 0), std::vector<double>{1.0});
}

template <typename Values>
Operation markerCopy(const char* name) {
    return {name,
            [] {
                const auto ring = std::make_shared<traceRssiBuffer>(2, 2);
                ring->appendMarkerPower(0, 1.0);
                const auto out = std::make_shared<Values>();
                return Trial{[=] { ring->getDataMarkerPower(*out, 0); },
                             [=] { return std::to_string(out->size()); }};
            },
            {"0"}};
}

TEST_F(MemoryFaultsTest, OfCopiedMarkerValuesLeaveTheResultEmpty) {
    expectToSurviveEveryFailure(
        {markerCopy<std::vector<double>>("std::vector"), markerCopy<QVector<double>>("QVector")});
}

template <typename Values>
void expectNothingOldWhereACopyHasNoRoom() {
    traceRssiBuffer ring(3, 3);
    for (const double value : {1.0, 2.0, 3.0}) {
        ring.appendMarkerPower(0, value);
    }
    Values out{7.0};
    bool happened = false;
    EXPECT_TRUE(runsOutOfMemory({[&] { ring.getDataMarkerPower(out, 0); }, {}}, 1,
                                MemoryFaults::Kind::FromThenOn, happened));
    EXPECT_TRUE(happened);
    EXPECT_TRUE(out.empty());
}

TEST_F(MemoryFaultsTest, OfCopiedMarkerValuesLeaveNothingOld) {
    expectNothingOldWhereACopyHasNoRoom<std::vector<double>>();
    expectNothingOldWhereACopyHasNoRoom<QVector<double>>();
}

TEST_F(MemoryFaultsTest, OfMarkerValuesCopiedToASharedVectorMayLeaveWhatIsShared) {
    traceRssiBuffer ring(3, 3);
    for (const double value : {1.0, 2.0, 3.0}) {
        ring.appendMarkerPower(0, value);
    }
    const QVector<double> old{7.0};
    // a shared vector allocates to be cleared, on Qt 5 only, then to grow
    const std::vector<QVector<double>> leftOnQt5{old, {}};
    const std::vector<QVector<double>> leftOnQt6{{}};
    long number = 0;
    for (const QVector<double>& left : rfu::qt::kIsQt6 ? leftOnQt6 : leftOnQt5) {
        ++number;
        QVector<double> out = old;
        bool happened = false;
        EXPECT_TRUE(runsOutOfMemory({[&] { ring.getDataMarkerPower(out, 0); }, {}}, number,
                                    MemoryFaults::Kind::Once, happened));
        EXPECT_TRUE(happened);
        EXPECT_EQ(out, left) << "allocation " << number;
        EXPECT_EQ(old, QVector<double>{7.0});
    }
}

// Texts -----------------------------------------------------------------------------------------

/// An operation of the unit service, which may have stored the new unit already.
template <typename Run>
Operation onUnits(const char* name, Run run, const States& between) {
    return {name,
            [run] {
                const auto math = std::make_shared<HMath>();
                math->setUnit(QStringLiteral("a unit of the application's own"));
                return Trial{[=] { run(*math); }, [=] { return math->unit().toStdString(); }};
            },
            between};
}

TEST_F(MemoryFaultsTest, OfUnitTextsLeaveTheOldUnitOrTheNewOne) {
    const QString dBuV = QStringLiteral("dBuV");
    const QString field = QStringLiteral("V/m");
    const QString power = QStringLiteral("W/m^2");
    expectToSurviveEveryFailure(
        {onUnits("level", [=](HMath& m) { m.getdBmToUnit(dBuV, -30.0, true); }, {"dBuV"}),
         onUnits("dBm", [=](HMath& m) { m.getdBmToUnit(QString(), -30.0, true); }, {"dBm"}),
         onUnits("volts", [](HMath& m) { m.getdBmToVolt(10.0, true); }, {"V"}),
         onUnits("microvolts", [](HMath& m) { m.getdBmToVolt(-90.0, true); }, {"µV"}),
         onUnits("watts", [](HMath& m) { m.getdBmToWatt(30.0, true); }, {"W"}),
         onUnits("nanowatts", [](HMath& m) { m.getdBmToWatt(-30.0, true); }, {"µW"}),
         onUnits("letter", [](HMath& m) { m.getDBmToW(-40.0); }, {}),
         onUnits("field level",
                 [](HMath& m) { m.getdBmToField(QStringLiteral("dBuV/m"), 0.0, 100.0, 0.0, true); },
                 {"dBuV/m"}),
         onUnits("field", [=](HMath& m) { m.getdBmToField(field, 0.0, 100.0, 0.0, true); },
                 {"V/m", "mV/m", "uV/m"}),
         onUnits("power density", [=](HMath& m) { m.getdBmToField(power, 0.0, 100.0, 0.0, true); },
                 {"W/m^2", "mW/m^2", "uW/m^2"}),
         onUnits("number",
                 [](HMath& m) { m.convertValUnit(QVariant(1.5), 2, QStringLiteral("dB")); }, {}),
         onUnits("number of a text",
                 [](HMath& m) { m.convertValUnit(QStringLiteral("1.5"), 2, QStringLiteral("dB")); },
                 {})});
}

TEST_F(MemoryFaultsTest, OfRangesAndFrequenciesLeaveTheObjectUsable) {
    rfUtils texts;
    texts.fCenter = 100.0;
    std::vector<Operation> operations = {
        stateless("width", [&] { texts.convertFreqWidthUnit(0.5); }),
        stateless("frequency", [&] { texts.makeFrequencyUnit(123456.789012); })};
    for (int type = 0; type < 23; ++type) {
        operations.push_back(
            stateless("range", [&texts, type] { texts.makeBoundaryMsg(-10.0, -30.0, type); }));
        operations.push_back(
            stateless("integer range", [&texts, type] { texts.makeBoundaryMsg(-10, -30, type); }));
    }
    expectToSurviveEveryFailure(operations);
    EXPECT_EQ(texts.makeBoundaryMsg(-10.0, -30.0, 16), " {Min: 87.20 dBuV/m, Max: 107.20 dBuV/m} ");
}

TEST_F(MemoryFaultsTest, OfToastsCountNone) {
    expectToSurviveEveryFailure({{"toast", [] {
                                      const auto texts = std::make_shared<rfUtils>();
                                      return Trial{[=] { texts->setToastMessage(kLabel); },
                                                   [=] {
                                                       return std::to_string(texts->toastCount) +
                                                              texts->toastMessages[0];
                                                   }};
                                  }}});
}

TEST_F(MemoryFaultsTest, OfBindingsLeaveTheCallsUpToOne) {
    using Item = DoubleElfItem;
    expectToSurviveEveryFailure(
        {{"setPropertyDB",
          [] {
              const auto server = std::make_shared<ServerItem>();
              const auto item = std::make_shared<Item>(server.get());
              return Trial{
                  [=] { rfUtils::setPropertyDB(item); },
                  [=] {
                      return server->property(QStringLiteral("inputType"))
                                 .toString()
                                 .toStdString() +
                             ' ' + server->formatter().toStdString() + ' ' +
                             server->property(QStringLiteral("precision")).toString().toStdString();
                  }};
          },
          {"11  ", "11 DbFormatter ", "11 DbFormatter 2"}}});
}

}  // namespace
