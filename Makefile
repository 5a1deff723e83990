# The front door. CMake and Ninja do the building; the presets are in CMakePresets.json.
MAKEFLAGS += --no-print-directory
.DEFAULT_GOAL := build

JOBS := $(shell nproc 2>/dev/null || echo 2)
# Some tests wait for the disk more than they compute.
TEST_JOBS := $(shell expr $(JOBS) + 1)
TORTURES := orvel_codec_torture orvel_kill_torture
PRESETS := dev release asan coverage windows
ROOMS := $(wildcard src platform embedded tools tests fuzz bench examples)
CXX_FILES = find $(ROOMS) -type f \( -name '*.h' -o -name '*.cpp' \) -print0
CXX_SOURCES = find $(ROOMS) -type f -name '*.cpp' -print0

.PHONY: build demo test windows test-windows package docs pictures format format-check tidy coverage bench bench-peers fuzz torture valgrind mutate clean help $(PRESETS:%=check-%)

build: build/release/build.ninja ## Build the programs, optimised, into build/release/bin
	@echo "Building the programs into build/release/bin"
	@cmake --build build/release --target OrvelCoordsysCore orvelcs

demo: ## Install what is missing, build the programs and show them at work
	@scripts/install-dependencies.sh demo
	@$(MAKE) build
	@echo "Running the demonstration"
	@scripts/demo.sh build/release/bin

test: ## Install what is missing, then run every test with clang++ and sanitizers, and again with g++ optimised
	@scripts/install-dependencies.sh test
	@$(MAKE) check-asan
	@scripts/browser-test-packages.sh build/browser
	@$(MAKE) check-release

windows: ## Install what is missing and cross-build the programs for Windows into build/windows/bin
	@scripts/install-dependencies.sh windows
	@scripts/windows-libraries.sh
	@$(MAKE) build/windows/build.ninja
	@echo "Building the programs for Windows into build/windows/bin"
	@cmake --build build/windows --target OrvelCoordsysCore orvelcs

test-windows: ## Install what is missing, then run every test of the Windows edition in Wine
	@scripts/install-dependencies.sh windows
	@scripts/windows-libraries.sh
	@scripts/wine-prefix.sh build/windows/wine
	@$(MAKE) check-windows

package: ## Install what is missing, build for Linux and for Windows, and pack both into build/packages
	@scripts/install-dependencies.sh package
	@$(MAKE) build
	@$(MAKE) windows
	@scripts/make-packages.sh build/packages build/windows build/release

docs: ## Install what is missing, then make the documentation as a site in build/docs and check its links
	@scripts/install-dependencies.sh docs
	@echo "Making the site"
	@scripts/docs/make_site.py build/docs

$(PRESETS:%=check-%): check-%: build/%/tests/CTestTestfile.cmake
	@echo "Building everything into build/$*"
	@cmake --build build/$*
	@echo "Running the tests of build/$*"
	@ctest --preset $* -j $(TEST_JOBS)

format: ## Lay out every C++ file as .clang-format says
	@echo "Laying out the C++ files"
	@$(CXX_FILES) | xargs -0 -P $(JOBS) -n 16 clang-format -i

format-check: ## Fail when a C++ file is not laid out as .clang-format says
	@echo "Checking the layout of the C++ files"
	@$(CXX_FILES) | xargs -0 -P $(JOBS) -n 16 clang-format --dry-run -Werror

tidy: build/tidy/build.ninja ## Run clang-tidy over every C++ source
	@echo "Running clang-tidy"
	@$(CXX_SOURCES) | xargs -0 -P $(JOBS) -n 1 clang-tidy --quiet -p build/tidy

coverage: ## Install what is missing, then tell how much of each folder the tests reach, and fail below the goals
	@scripts/install-dependencies.sh coverage
	@scripts/coverage.py --check-exclusions
	@find build/coverage -name '*.gcda' -delete 2>/dev/null || true
	@$(MAKE) check-coverage
	@echo "Summing up what was reached"
	@scripts/coverage.py build/coverage

bench: ## Install what is missing, then measure what transformation configurations cost, by their length
	@scripts/install-dependencies.sh bench
	@echo "Configuring build/release, with the benchmarks"
	@cmake --preset release
	@echo "Building the benchmarks into build/release/bin"
	@cmake --build build/release --target orvel_scale_check orvel_bench orvel_drawing_scale
	@echo "Comparing small drawings with large ones"
	@build/release/bin/orvel_drawing_scale
	@echo "Comparing a length with twice the length"
	@build/release/bin/orvel_scale_check
	@echo "Running the benchmarks"
	@build/release/bin/orvel_bench

bench-peers: ## Install what is missing, then measure this project beside well-known programs and libraries, in one run
	@scripts/install-dependencies.sh bench-peers
	@echo "Configuring build/release, with the peers"
	@sources=$$(scripts/peer-sources.sh) && cmake --preset release -DORVEL_PUGIXML_SOURCE="$$sources"
	@echo "Building the comparison into build/release/bin"
	@cmake --build build/release --target orvel_bench_peers orvelcs OrvelCoordsysCore
	@echo "Comparing"
	@build/release/bin/orvel_bench_peers

fuzz: ## Install what is missing, then fuzz each target for FUZZ_SECONDS, 60 unless set
	@scripts/install-dependencies.sh fuzz
	@$(MAKE) build/fuzz/build.ninja
	@echo "Building the fuzzers into build/fuzz/bin"
	@cmake --build build/fuzz --target fuzzers
	@echo "Fuzzing"
	@scripts/fuzz.sh build/fuzz/bin

torture: build/release/build.ninja ## Run what is too long for every test, for minutes: packing, killed saves, growth
	@echo "Building what tortures into build/release/bin"
	@cmake --build build/release --target $(TORTURES) memory_tests cli_tests
	@for program in $(TORTURES); do echo "Running $$program"; build/release/bin/$$program || exit 1; done
	@echo "Running memory_tests for long"
	@ORVEL_ROUNDS=100000 ORVEL_REACTORS=100000 build/release/bin/memory_tests
	@echo "Running processes that change the user's configuration, or one drawing, at once"
	@ORVEL_ROUNDS=200 build/release/bin/cli_tests --gtest_filter='Concurrent*:MixedCommands.*'
	@echo "Running GDAL over the exported files of 300 systems"
	@ORVEL_EXPORTED_SYSTEMS=300 build/release/bin/cli_tests --gtest_filter='ExportedSystems.*'

valgrind: ## Install what is missing, then run the test programs under valgrind
	@scripts/install-dependencies.sh valgrind
	@$(MAKE) build/valgrind/build.ninja
	@echo "Building everything into build/valgrind"
	@cmake --build build/valgrind
	@echo "Running the tests under valgrind"
	@scripts/valgrind.sh build/valgrind/bin

mutate: ## Install what is missing, then tell which changes of FILES, SINCE=REVISION or ALL=1 no test notices
	@scripts/install-dependencies.sh mutate
	@scripts/mutate $(if $(ALL),--all,$(if $(SINCE),--since $(SINCE),$(FILES)))

pictures: build ## Draw the pictures of the documentation anew, into docs/pictures
	@scripts/pictures.sh build/release/bin/orvelcs

clean: ## Remove everything that was built
	@echo "Removing build"
	@rm -rf build

help: ## Show this list
	@sed -n 's/^\([a-z-]*\):.* ## /\1\t/p' Makefile | expand -t 14

$(PRESETS:%=build/%/build.ninja) build/tidy/build.ninja build/fuzz/build.ninja build/valgrind/build.ninja: build/%/build.ninja: CMakePresets.json
	@echo "Configuring build/$*"
	@cmake --preset $* || { scripts/install-dependencies.sh --check $(or $(filter windows,$*),$(if $(filter release,$*),demo,test)); exit 1; }
	@touch $@

# A folder that was configured before GoogleTest came has no tests yet, and is configured again.
$(PRESETS:%=build/%/tests/CTestTestfile.cmake): build/%/tests/CTestTestfile.cmake: build/%/build.ninja
	@test -f $@ || { echo "Configuring build/$* again, with the tests"; cmake --preset $*; }
	@test -f $@ || { scripts/install-dependencies.sh --check $(or $(filter windows,$*),test); exit 1; }
	@touch $@
