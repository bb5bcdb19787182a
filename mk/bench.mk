# Benchmarks against peer JSON libraries (bench/README.md).
#   make bench        full run: timing and memory, then bench/RESULTS.md
#                     and the chart bench/results.png; instruction counts
#                     under callgrind into bench/INSTRUCTIONS.md
#   make bench-smoke  builds the benchmarks and runs each one once on small
#                     inputs; checks that they run, asserts no timing
# BENCH_ARGS adds options to the timing run (e.g. --benchmark_filter=parse).

.PHONY: bench bench-build bench-smoke

BENCH_BIN := build/bench/bench
BENCH_OUT := build/bench/results
BENCH_ARGS ?=
BENCH_REPETITIONS ?= 5
# Debian's interpreter, the one python3-matplotlib is installed for.
BENCH_PYTHON ?= /usr/bin/python3

bench-build:
	@scripts/deps.sh base bench
	cmake --preset bench
	cmake --build --preset bench

bench: bench-build
	mkdir -p $(BENCH_OUT)
	$(BENCH_BIN)/tavrin_bench --benchmark_repetitions=$(BENCH_REPETITIONS) \
	  --benchmark_enable_random_interleaving=true \
	  --benchmark_report_aggregates_only=true --benchmark_min_time=0.3 \
	  --benchmark_out=$(BENCH_OUT)/timing.json --benchmark_out_format=json $(BENCH_ARGS)
	$(BENCH_BIN)/tavrin_bench_memory \
	  --benchmark_out=$(BENCH_OUT)/memory.json --benchmark_out_format=json
	$(BENCH_PYTHON) bench/report.py $(BENCH_OUT)/timing.json $(BENCH_OUT)/memory.json \
	  --results bench/RESULTS.md --png bench/results.png
	bench/instructions.sh > $(BENCH_OUT)/instructions.md
	mv $(BENCH_OUT)/instructions.md bench/INSTRUCTIONS.md

# One iteration of every benchmark on the small inputs: the twitter corpus
# file, the generated records and the base size of every scaling shape.
BENCH_SMOKE_FILTER := twitter|records|scaling/.*/(4096|1024|31|16384)$$

bench-smoke: bench-build
	mkdir -p $(BENCH_OUT)
	$(BENCH_BIN)/tavrin_bench --benchmark_min_time=0 \
	  --benchmark_filter='$(BENCH_SMOKE_FILTER)' \
	  --benchmark_out=$(BENCH_OUT)/smoke-timing.json --benchmark_out_format=json
	$(BENCH_BIN)/tavrin_bench_memory --benchmark_filter='twitter|records' \
	  --benchmark_out=$(BENCH_OUT)/smoke-memory.json --benchmark_out_format=json
	$(BENCH_PYTHON) bench/report.py $(BENCH_OUT)/smoke-timing.json $(BENCH_OUT)/smoke-memory.json \
	  --png $(BENCH_OUT)/smoke.png > $(BENCH_OUT)/smoke.md

CHECK_TARGETS += bench-smoke
