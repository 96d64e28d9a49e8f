#include <gtest/gtest.h>

#include "runCommand.h"

TEST(Frequency, freq) {
    expectCommands({
        shows("gigahertz above 1000 MHz", "freq 2400 1000", "2.400000000 GHz\n1000.000000 MHz\n"),
        shows("kilohertz and hertz", "freq 0.5 0.001 0", "500.000 kHz\n1000 Hz\n0 Hz\n"),
        shows("with units", "freq 88.1MHz \"2.4 GHz\" 100kHz 5Hz 1e-3GHz",
              "88.100000 MHz\n2.400000000 GHz\n100.000 kHz\n5 Hz\n1000.000 kHz\n"),
        shows("CSV in MHz", "freq 100kHz 2.4GHz 5Hz -1 --format csv",
              "input,MHz,text\n"
              "100kHz,0.1,100.000 kHz\n"
              "2.4GHz,2400,2.400000000 GHz\n"
              "5Hz,5e-06,5 Hz\n"
              "-1,-1,-1000.000 kHz\n"),
        shows("CSV with the nearest number of MHz: 9 times 0.001 is another",
              "freq 9kHz \"9 Hz\" 5Hz --format csv",
              "input,MHz,text\n9kHz,0.009,9.000 kHz\n9 Hz,9e-06,9 Hz\n5Hz,5e-06,5 Hz\n"),
        shows("JSON", "freq 88.1 --format json",
              "[\n  {\"input\": \"88.1\", \"MHz\": 88.1, \"text\": \"88.100000 MHz\"}\n]\n"),
        shows("as receivers take them", "freq 2.4G 88.1M 100k 88.1mhz",
              "2.400000000 GHz\n88.100000 MHz\n100.000 kHz\n88.100000 MHz\n"),
        fails("a small m is milli", "freq 1m",
              "\"1m\" is not a frequency such as 88.1MHz or a number of MHz"),
    });
}

TEST(Frequency, width) {
    expectCommands({
        shows("shortest text", "width 20 1500 1000", "20MHz\n1.5GHz\n1000MHz\n"),
        shows("kilohertz from 100 Hz", "width 0.0005 0.0001 50Hz", "0.5kHz\n100Hz\n50Hz\n"),
        shows("negative widths are hertz", "width -1", "-1e+06Hz\n"),
        shows("standard input", "width", "30kHz\n").given("30kHz\n"),
        shows("CSV", "width 0.2 --format csv", "input,MHz,text\n0.2,0.2,200kHz\n"),
        fails("no width", "width wide",
              "\"wide\" is not a frequency such as 88.1MHz or a number of MHz"),
    });
}
