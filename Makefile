# QorDesign: build, test, demo and benchmark.
#   make demo   installs what is missing, builds and starts the demo designer
#               (without a DISPLAY: runs it under Xvfb and writes demo-screenshot.png)
#   make test   installs what is missing, builds everything with the sanitizers
#               and runs the whole suite; the last line reads "N passed, N failed, N skipped"
#   make bench  builds and runs the benchmarks, writes bench/results.tsv
#   make dict   rebuilds the shipped dictionaries in resources/dict from their CSV
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

.PHONY: all deps release demo test bench dict fuzz clean

all: release

deps:
	@scripts/ensure-deps.sh

release: deps
	@cmake -S . -B $(RELEASE) -G Ninja -DCMAKE_BUILD_TYPE=Release -DQORDESIGN_BUILD_TESTS=OFF > /dev/null
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

dict: release
	@$(RELEASE)/tools/qordict csv2db resources/dict/qordesign-zh.csv resources/dict/qordesign-zh.sqlite

fuzz:
	@scripts/ensure-deps.sh --fuzz
	@tests/fuzz/run-fuzz.sh

clean:
	rm -rf build demo-screenshot.png
