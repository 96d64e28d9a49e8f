# %% [markdown]
# # A map and a radio link over it
# A terrain with its colour table, the places of its corners, and a link at 433 MHz with its line of sight.
# usage: terrain.py RASTER TAB OUT.png

# %%
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np

import rfutils

terrain = rfutils.load_raster(sys.argv[1])
georeference = rfutils.control_points(sys.argv[2])
start, end = (437000, 5266500), (443500, 5266500)
link = terrain.profile(start, end, heights=(10, 10), center_hz=433e6)

# %%
figure, (area, section) = plt.subplots(2, 1, figsize=(9, 10), layout="constrained", height_ratios=(2, 1))
colormap, norm = terrain.colormap()
image = area.imshow(terrain.values, cmap=colormap, norm=norm, extent=terrain.extent)
figure.colorbar(image, ax=area, label="m")
area.plot(*zip(start, end), "r-", linewidth=2)
for point in georeference.points:
    area.annotate(f"{rfutils.to_dms(point.latitude).degrees}° {rfutils.to_dms(point.latitude).minutes}' N", (point.x, point.y),
                  xytext=(0, 4), textcoords="offset points", ha="center", annotation_clip=False)
area.ticklabel_format(useOffset=False, style="plain")

# %%
kilometres = link["distances"] / 1e3
section.fill_between(kilometres, link["heights"], color="tan")
ends = np.array([link["start_ground"], link["end_ground"]]) + 10
section.plot(kilometres[[0, -1]], ends, "r-", linewidth=2, label="line of sight")
section.plot(link["least_at"] / 1e3, link["terrain"], "kv", label="least clear")
section.set(xlabel="km", ylabel="m", xlim=(0, kilometres[-1]))
section.legend()

# %%
figure.savefig(sys.argv[3], dpi=100)
print(f"{link['distance']:.0f} m, clear: {link['clear']}, loss of free space {link['free_space_loss']:.1f} dB and of the edge "
      f"{link['knife_edge_loss']:.1f} dB")
