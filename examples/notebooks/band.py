# %% [markdown]
# # A band: who is there, how strong, how busy
# A recording of the FM band over 40 minutes. Run it as a script, or cell by cell where cells are known.
# usage: band.py RECORDING OUT.png

# %%
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.dates
import matplotlib.pyplot as plt

import rfutils

recording = rfutils.Recording(sys.argv[1])
peaks = recording.peaks()
megahertz = recording.frequencies / 1e6

# %% [markdown]
# Level over frequency and time above, statistics of each point with the signals below, and the occupancy of channels of 200 kHz.

# %%
figure, (waterfall, spectrum, occupancy) = plt.subplots(
    3, 1, figsize=(11, 10), sharex=True, layout="constrained", height_ratios=(3, 2, 1))
image = waterfall.pcolormesh(megahertz, recording.times, recording.levels, shading="nearest", rasterized=True)
waterfall.yaxis.set_major_formatter(matplotlib.dates.DateFormatter("%H:%M"))
waterfall.invert_yaxis()
waterfall.set_ylabel("time")
figure.colorbar(image, ax=waterfall, label="dBm")

# %%
points = recording.points(unit="dBuV")
for statistic in ("maximum", "average", "minimum"):
    spectrum.plot(megahertz, points[statistic], linewidth=1, label=statistic)
maxima = rfutils.convert(peaks["maximum"], "dBuV")
spectrum.plot(peaks["frequency_hz"] / 1e6, maxima, "kv", markersize=5, label="signals")
spectrum.set_ylabel("dBuV")
spectrum.margins(y=0.2)
spectrum.legend(loc="upper right", ncols=4)

# %%
low, high = recording.bands[0][0], recording.bands[-1][1]
busy = recording.occupancy(limit=-80, channels=(low, 200e3, int((high - low) / 200e3))).channels
middles = (busy["from_hz"] + busy["to_hz"]) / 2e6
occupancy.bar(middles, 100 * busy["occupancy"], width=0.18)
occupancy.set_ylabel("% above -80 dBm")
occupancy.set_xlabel("MHz")
occupancy.set_xlim(low / 1e6, high / 1e6)

# %%
figure.savefig(sys.argv[2], dpi=100)
print(f"{'MHz':>10} {'level':>12} {'field':>14} {'present':>8}")
for peak in peaks:
    frequency = peak["frequency_hz"]
    print(f"{frequency / 1e6:10.4f} {rfutils.text(peak['maximum']):>12} "
          f"{rfutils.text(peak['maximum'], 'dBuV/m', center_hz=frequency):>14} {peak['present']:8.3f}")
