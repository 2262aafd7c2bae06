# SPDX-License-Identifier: MIT
# QorDesign: build, test, demo and benchmark.
#   make demo   installs what is missing, builds and starts the demo designer
#               (without a DISPLAY: runs it under Xvfb and writes demo-screenshot.png)
#   make test   installs what is missing, builds everything with the sanitizers
#               and runs the whole suite; the last line reads "N passed, N failed, N skipped"
#   make bench  builds and runs the benchmarks, writes bench/results.tsv
#   make dict   rebuilds the shipped dictionaries in resources/dict from their CSV
#   make soak   builds the sanitizer build's soak test alone and runs its random
#               walk over the assembled designer: make soak STEPS=100000 SEED=7
#   make fuzz   installs clang and libFuzzer if missing, builds the fuzz targets (build/fuzz)
#               and runs each for FUZZ_SECONDS (default 60); fails on any finding and keeps
#               its input in tests/fuzz/regressions/<target>/
SHELL := /bin/bash
.SHELLFLAGS := -eo pipefail -c

RELEASE := build/release
XVFB_SCREEN := -screen 0 1280x1024x24
# Qt wants a private runtime folder; root sessions often have none.
ifndef XDG_RUNTIME_DIR
export XDG_RUNTIME_DIR := $(shell mktemp -d)
endif

.PHONY: all deps release demo test bench dict soak fuzz clean

all: release

deps:
	@scripts/ensure-deps.sh

release: deps
	@cmake --preset release -B $(RELEASE) > /dev/null
	@ninja -C $(RELEASE)

demo: release
	@if [ -n "$$DISPLAY" ]; then \
	  $(RELEASE)/demo/qordemo; \
	else \
	  echo "no DISPLAY: running the demo under Xvfb, writing demo-screenshot.png"; \
	  QT_QPA_PLATFORM=xcb xvfb-run -a -s "$(XVFB_SCREEN)" $(RELEASE)/demo/qordemo --screenshot=demo-screenshot.png; \
	fi

test: deps
	@tests/run-tests.sh

bench: release
	@QT_QPA_PLATFORM=xcb xvfb-run -a -s "$(XVFB_SCREEN)" $(RELEASE)/bench/qorbench bench/results.tsv

# The soak alone, in the sanitizer build the suite uses and with the
# suite's environment, but without CTest's time limit nor Qt Test's limit
# per test function: STEPS and SEED reach the walk through the environment.
SOAK_BUILD := build/asan
STEPS ?= 20000
soak: deps
	@cmake --preset asan -B $(SOAK_BUILD) > $(SOAK_BUILD).configure.log
	@ninja -C $(SOAK_BUILD) -j2 tst_qorsoak
	@QT_QPA_PLATFORM=xcb QTEST_FUNCTION_TIMEOUT=86400000 \
	  QORDESIGN_SOAK_STEPS=$(STEPS) $(if $(SEED),QORDESIGN_SOAK_SEED=$(SEED)) \
	  ASAN_OPTIONS=detect_leaks=1:strict_init_order=1:detect_stack_use_after_return=0 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/sanitizer-suppressions.txt:print_suppressions=0 \
	  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  xvfb-run -a -s "$(XVFB_SCREEN) -nolisten tcp" $(SOAK_BUILD)/tests/tst_qorsoak

dict: release
	@$(RELEASE)/tools/qordict csv2db resources/dict/qordesign-zh.csv resources/dict/qordesign-zh.sqlite

fuzz:
	@scripts/ensure-deps.sh --fuzz
	@tests/fuzz/run-fuzz.sh

clean:
	rm -rf build demo-screenshot.png
