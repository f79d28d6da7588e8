# The two set-up commands of the README: `make run` and `make test`.
BUILD ?= build
JOBS ?= $(shell nproc)
CLI := $(BUILD)/src/zorvex64-cli
VIEWER := $(BUILD)/src/zorvex64
SITE := samples/site/DemoSite.obj

FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 30
# Builds take turns on a shared machine; runs of the fuzzers need no lock.
BUILD_LOCK ?= flock /tmp/zv-build.lock

.PHONY: deps configure build run test bench sample clean fuzz

deps:
	bash scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The main job on the bundled demo site: the CLI's facts, then the viewer
# (without a display: its first frame under Xvfb, saved to Screenshots/).
run: build
	bash scripts/main-job.sh $(CLI) $(SITE) $(VIEWER)

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS) --timeout 600

# Speed figures; they need a few GB of disk in /tmp for generated meshes.
bench: build
	bash scripts/run-benchmarks.sh $(BUILD)

# The file readers under libFuzzer with ASan and UBSan: a clang build of its
# own in $(FUZZ_BUILD), then FUZZ_SECONDS of fuzzing a target; fails on any finding.
fuzz: deps
	cmake -S . -B $(FUZZ_BUILD) -G Ninja -DZV_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
	$(BUILD_LOCK) cmake --build $(FUZZ_BUILD) --target zv_fuzzers -j $(JOBS)
	bash fuzz/run-fuzzers.sh $(FUZZ_BUILD) $(FUZZ_SECONDS)

# Writes the demo site anew (it is committed; the generator is deterministic).
sample: build
	$(BUILD)/tools/sitegen/zv-sitegen samples/site

clean:
	rm -rf $(BUILD)
