# Installation rules join here.
