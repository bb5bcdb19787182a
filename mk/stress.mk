# The stress tests at full size: the large generated documents at 100 MB
# (TAVRIN_STRESS_MB) in the optimised build. The ordinary test run has them at
# 4 MB and the AddressSanitizer run at 1 MB; at full size they take a few GB
# of memory and minutes, far more under the sanitizers, so they are not part
# of check.

.PHONY: stress

STRESS_MB ?= 100

stress:
	@scripts/deps.sh base
	cmake --preset dev
	cmake --build --preset dev -j2
	TAVRIN_STRESS_MB=$(STRESS_MB) ctest --preset dev -L stress --timeout 1800
