# The plug-in's exported surface and the tavrin-host program.

.PHONY: exported-symbols

# Rewrites tests/exported-symbols.txt from the built libpluginjson.so (after an
# intended change of the exported surface; review the diff).
exported-symbols:
	@scripts/deps.sh base
	cmake --preset dev
	cmake --build --preset dev --target exported-symbols
