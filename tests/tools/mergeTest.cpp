// States of parts of a recording, merged, print what one run over the whole recording prints.
#include <gtest/gtest.h>
#include <support/cText.h>

#include <QFile>
#include <random>
#include <sstream>
#include <vector>

#include "runCommand.h"

namespace {

/// Two hops of 8 bins, 0.25 MHz each; sweep 2 lacks the second one, a level of sweep 4 is not measured.
/// A signal at 101 MHz comes and goes, one at 102.5 MHz stays.
std::vector<std::string> sweeps(int count) {
    std::mt19937 random(3);
    std::vector<std::string> all;
    for (int i = 0; i < count; ++i) {
        std::string lines;
        for (int hop = 0; hop < (i == 2 ? 1 : 2); ++hop) {
            const int low = 100000000 + 2000000 * hop;
            lines += "2024-01-01, 1" + std::to_string(i / 6) + ":00:" + std::to_string(10 + i % 6) +
                     ", " + std::to_string(low) + ", " + std::to_string(low + 2000000) +
                     ", 250000, 5";
            for (int bin = 0; bin < 8; ++bin) {
                const int noise = -9000 - static_cast<int>(random() % 300);
                const bool isSignal = hop == 0 ? bin == 4 && i % 3 == 1 : bin == 2;
                const int level = noise + (isSignal ? 4000 : 0);
                lines += i == 4 && bin == 6
                             ? ", nan"
                             : ", " + QString::number(level / 100.0, 'f', 2).toStdString();
            }
            lines += '\n';
        }
        all.push_back(lines);
    }
    return all;
}

std::string joined(const std::vector<std::string>& lines, std::size_t first, std::size_t last) {
    std::string text;
    for (std::size_t i = first; i < last; ++i) {
        text += lines[i];
    }
    return text;
}

struct Subject {
    const char* name;
    const char* options;  // of the command
    const char* shown;    // of the command and of merge
};

const Subject kSubjects[] = {
    {"trace", "trace --keep all", ""},
    {"points", "trace --keep all --limit -80", "--all-points --format csv"},
    {"markers", "trace --keep all", "--marker 101MHz --marker 3 --unit dBuV --format json"},
    {"peaks", "peaks", "--above 10 --format csv"},
    {"threshold", "peaks", "--window 7 --width-at 3 --spur 102.5:0.3 --format csv"},
    {"power", "power --series --channel 100:101.5 --spacing 0.75", "--unit dBuV --format csv"},
    {"occupancy", "occupancy --limit -80 --channels 100:0.5:9 --by hour", "--format csv"},
    {"cells", "occupancy --limit -80", "--unit dBuV --format csv"},
};

std::vector<std::string> fieldsOf(const std::string& output) {
    std::vector<std::string> fields(1);
    for (const char c : output) {
        if (c == ',' || c == '\n' || c == ' ') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

/// Tables whose numbers may differ in their last digits.
void expectSame(const std::string& output, const std::string& expected, const std::string& what) {
    const std::vector<std::string> fields = fieldsOf(output);
    const std::vector<std::string> others = fieldsOf(expected);
    ASSERT_EQ(fields.size(), others.size()) << what << "\n" << output << expected;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i] != others[i]) {
            EXPECT_NEAR(rfu::test::decimalOf(fields[i]), rfu::test::decimalOf(others[i]), 1e-10)
                << what;
        }
    }
}

QStringList words(const std::string& line) {
    return splitWords(line);
}

std::string run(const QStringList& arguments, const SampleFolder& folder) {
    const CommandResult result = runCommand(arguments, {}, folder);
    EXPECT_EQ(result.exitStatus, 0) << arguments.join(QLatin1Char(' ')).toStdString() << "\n"
                                    << result.errors;
    return result.output;
}

/// Writes the state of some sweeps.
void writeState(const Subject& row, const SampleFolder& folder, const std::string& lines,
                const std::string& name) {
    folder.add((name + ".csv").c_str(), lines);
    run(words(row.options) + words(name + ".csv --state " + name), folder);
}

/// "floor" and "above" of peaks lie within a bin of those of a single run.
std::string withoutFloor(const std::string& output) {
    std::istringstream lines(output);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string field;
        for (int i = 0; std::getline(fields, field, ','); ++i) {
            text += i == 4 || i == 5 ? "" : field + ',';
        }
        text += '\n';
    }
    return text;
}

std::string comparable(const Subject& row, const std::string& output) {
    return row.options == std::string("peaks") ? withoutFloor(output) : output;
}

}  // namespace

TEST(Merge, OfTwoPartsSplitAnywhereIsOneRun) {
    const std::vector<std::string> all = sweeps(9);
    for (const Subject& row : kSubjects) {
        const SampleFolder folder;
        folder.add("all.csv", joined(all, 0, all.size()));
        const std::string expected = comparable(
            row, run(words(row.options) + words(std::string("all.csv ") + row.shown), folder));
        for (std::size_t split = 1; split < all.size(); ++split) {
            writeState(row, folder, joined(all, 0, split), "a");
            writeState(row, folder, joined(all, split, all.size()), "b");
            const char* const files = split % 2 == 0 ? "merge a b " : "merge b a ";
            expectSame(comparable(row, run(words(std::string(files) + row.shown), folder)),
                       expected, std::string(row.name) + " " + std::to_string(split));
        }
    }
}

TEST(Merge, InATreeIsOneRun) {
    const std::vector<std::string> all = sweeps(12);
    for (const Subject& row : kSubjects) {
        const SampleFolder folder;
        folder.add("all.csv", joined(all, 0, all.size()));
        const std::string expected = comparable(
            row, run(words(row.options) + words(std::string("all.csv ") + row.shown), folder));
        const std::size_t bounds[] = {0, 3, 4, 8, 12};
        for (std::size_t i = 0; i < 4; ++i) {
            writeState(row, folder, joined(all, bounds[i], bounds[i + 1]),
                       std::string(1, static_cast<char>('a' + i)));
        }
        for (const char* tree :
             {"merge a b --state ab; merge d c --state cd; merge cd ab --state all",
              "merge c b --state bc; merge bc a --state abc; merge abc d --state all",
              "merge d c b a --state all"}) {
            for (const QString& step : QString::fromLatin1(tree).split(QStringLiteral("; "))) {
                run(words(step.toStdString()), folder);
            }
            const std::string output = run(words(std::string("merge all ") + row.shown), folder);
            expectSame(comparable(row, output), expected, std::string(row.name) + ", " + tree);
            // A state of one run and one that was merged once more differ in no byte.
            run(words("merge all --state again"), folder);
            EXPECT_EQ(folder.read("again"), folder.read("all")) << row.name;
        }
    }
}

TEST(Merge, TellsTheFloorWithinABin) {
    const std::vector<std::string> all = sweeps(12);
    const SampleFolder folder;
    folder.add("all.csv", joined(all, 0, all.size()));
    writeState(kSubjects[3], folder, joined(all, 0, 5), "a");
    writeState(kSubjects[3], folder, joined(all, 5, 12), "b");
    const auto floorsOf = [](const std::string& output) {
        std::istringstream lines(output);
        std::vector<double> floors;
        std::string line;
        for (std::getline(lines, line); std::getline(lines, line);) {
            std::istringstream fields(line);
            std::string field;
            for (int i = 0; i < 5; ++i) {
                std::getline(fields, field, ',');
            }
            floors.push_back(std::stod(field));
        }
        return floors;
    };
    const auto floors = floorsOf(run(words("peaks all.csv --above 10 --format csv"), folder));
    const auto merged = floorsOf(run(words("merge a b --above 10 --format csv"), folder));
    ASSERT_EQ(floors.size(), 2U);
    ASSERT_EQ(merged.size(), floors.size());
    for (std::size_t i = 0; i < floors.size(); ++i) {
        EXPECT_NEAR(merged[i], floors[i], 0.05);
    }
}

TEST(Merge, OfTracesWithoutFrequenciesKeepsTheirOrder) {
    const SampleFolder folder;
    folder.add("1.csv", "-10,-20\n-30,\n");
    folder.add("2.csv", "-50,-60\n");
    folder.add("3.csv", "-50\n");
    for (const char* file : {"1", "2", "3"}) {
        run(words(std::string("trace ") + file + ".csv --state " + file), folder);
    }
    expectCommands(
        {shows("all points", "merge 1 2 --all-points --format csv",
               "point,frequencyMHz,count,average,maximum,minimum,unit\n"
               "0,,3,-30,-10,-50,dBm\n1,,2,-40,-20,-60,dBm\n"),
         shows("the summary", "merge 2 1 --format csv",
               "sweeps,kept,points,fromMHz,toMHz,bands,firstTime,lastTime\n3,3,2,,,,,\n"),
         fails("another length", "merge 1 3",
               "3: has traces of 1 levels, while 1 has traces of 2")},
        folder);
}

TEST(Merge, RefusesWhatDoesNotGoTogether) {
    const std::vector<std::string> all = sweeps(8);
    const SampleFolder folder;
    folder.add("1.csv", joined(all, 0, 4));
    folder.add("2.csv", joined(all, 4, 8));
    folder.add("other.csv",
               "2024-01-02, 10:00:00, 100000000, 102000000, 500000, 5, -1, -2, -3, -4\n");
    folder.add("no.state", "no state\n");
    folder.add("new.state", "rfutils state 2\nwhatever");
    const char* const kStates[] = {
        "trace 1.csv --state t1",
        "trace 2.csv --state t2 --limit -80",
        "trace other.csv --state other",
        "peaks 1.csv --state p1",
        "power 1.csv --series --channel 100:101 --state w1",
        "power 2.csv --series --channel 100:101 --channel 102:103 --state w2",
        "occupancy 1.csv --limit -80 --state o1",
        "occupancy 2.csv --limit -81 --state o2",
        "occupancy 2.csv --limit -80 --by hour --state o3",
        "occupancy 2.csv --limit 20dBuV/m --center 90 --state o4",
    };
    for (const char* command : kStates) {
        run(words(command), folder);
    }
    const std::string whole = folder.read("t1");
    folder.add("cut", whole.substr(0, whole.size() - 1));
    folder.add("longer", whole + '\n');
    std::string changed = whole;
    changed[100] = static_cast<char>(changed[100] ^ 1);
    folder.add("changed", changed);
    const std::string damage = ": is damaged or cut";
    expectCommands(
        {fails("commands", "merge t1 p1",
               "p1: is a state of rfutils peaks, while t1 is one of rfutils trace"),
         fails("limits", "merge t1 t2",
               "t2: was made with --limit -80, while t1 was made with no --limit"),
         fails("limits of occupancy", "merge o1 o2",
               "o2: was made with --limit -81dBm, while o1 was made with --limit -80dBm"),
         fails("hours", "merge o1 o3",
               "o3: was made with --by hour, while o1 was made with no --by"),
         fails("channels", "merge w1 w2",
               "w2: was made with --channel 100:101 --channel 102:103, while w1 was made with "
               "--channel 100:101"),
         fails("receivers", "merge t1 other",
               "other: is of another receiver setting than t1, which lacks the hop 100000000 to "
               "102000000 Hz in steps of 500000 Hz"),
         fails("times", "merge t1 t1",
               "t1: begins at 2024-01-01 10:00:10, before t1 ends at 2024-01-01 10:00:13"),
         fails("no state", "merge t1 no.state", "no.state: is no state that rfutils wrote"),
         fails("a recording", "merge 1.csv", "1.csv: is no state that rfutils wrote"),
         fails("a newer state", "merge new.state",
               "new.state: is a state of version \"2\"; this rfutils reads 1"),
         fails("a state that was cut", "merge cut", "cut" + damage),
         fails("a state with more", "merge longer", "longer" + damage),
         fails("a bit of a state", "merge t1 changed", "changed" + damage),
         fails("no file", "merge none", "none: No such file or directory"),
         fails("an input as output", "merge t1 --state t1",
               "t1: cannot be written: it is the input t1"),
         misuses("options of another command", "merge t1 --above 10",
                 "--above does not apply to the states of rfutils trace"),
         misuses("options that are fixed", "merge o4 --center 95",
                 "--center is fixed by the states of rfutils occupancy"),
         misuses("a unit of nothing", "merge t1 --unit dBuV",
                 "--unit needs a --marker, --all-points or --plot")},
        folder);
}

TEST(Merge, NeedsStatesOfWholeRuns) {
    const SampleFolder folder;
    folder.add("4.csv", joined(sweeps(4), 0, 4));
    expectCommands(
        {fails("sweeps that are not kept", "trace 4.csv --keep 3 --state s",
               "4.csv: has more sweeps than the 3 that are kept, while a state holds all; use "
               "--keep all"),
         misuses("a floor", "occupancy 4.csv --above 10 --state s",
                 "--state needs --limit: a floor is that of a whole recording"),
         misuses("means", "power 4.csv --channel 100:101 --state s", "--state needs --series"),
         fails("an input as output", "peaks 4.csv --state 4.csv",
               "4.csv: cannot be written: it is the input 4.csv"),
         fails("no folder", "peaks 4.csv --above 10 --format csv --state none/s",
               "none/s: cannot be written: No such file or directory")
             .after(run(words("peaks 4.csv --above 10 --format csv"), folder))},
        folder);
    EXPECT_FALSE(QFile::exists(folder.path() + QStringLiteral("/s")));
}
