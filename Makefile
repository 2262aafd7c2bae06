# QorDesign — build, test, demo and benchmark.
#   make demo   installs what is missing, builds, starts the demo designer
#               (without a DISPLAY: runs it under Xvfb and writes demo-screenshot.png)
#   make test   installs what is missing, builds everything, runs the whole suite
#   make bench  builds and runs the benchmarks, writes bench/results.tsv
#   make dict   builds tools/qordict and remakes resources/dict/*.xml from their CSV
SHELL := /bin/bash
.SHELLFLAGS := -eo pipefail -c

# lazbuild keeps its configuration inside the project, so that nothing
# outside the work tree is written (PLATFORM.md).
LAZCONFIG := $(CURDIR)/build/lazconfig
# lazbuild compiles its base packages (LCL, BuildIntf, IDEIntf, ...) inside
# the Lazarus directory whenever their state files look stale, which they do
# in Debian's packages; it works on a copy of that directory inside build/.
LAZSRC ?= /usr/lib/lazarus/default
LAZCOPY := $(CURDIR)/build/lazarus
LAZBUILD = lazbuild --pcp=$(LAZCONFIG) --lazarusdir=$(LAZCOPY) -q
LOGS := build/logs
XVFB_SCREEN := -screen 0 1280x1024x24

.PHONY: all deps packages demo-build tests-build bench-build tools build demo test bench dict clean

all: build

deps:
	@scripts/ensure-deps.sh

# $(call lazbuild,target,logname): quiet build; the log is shown on failure.
define lazbuild
	@mkdir -p $(LOGS) $(LAZCONFIG)
	@echo "lazbuild $(1)"
	@$(LAZBUILD) $(1) > $(LOGS)/$(2).log 2>&1 || { grep -E "Error|Fatal" $(LOGS)/$(2).log || tail -n 40 $(LOGS)/$(2).log; exit 1; }
endef

$(LAZCOPY)/.copied: | deps
	@echo "copying the Lazarus directory to $(LAZCOPY)"
	@rm -rf $(LAZCOPY) && mkdir -p $(LAZCOPY)
	@cp -a "$$(readlink -f $(LAZSRC))/." $(LAZCOPY)/
	@touch $@

packages: deps $(LAZCOPY)/.copied
	$(call lazbuild,packages/qordesign.lpk,qordesign)
	$(call lazbuild,packages/qordesign_dsgn.lpk,qordesign_dsgn)

demo-build: packages
	$(call lazbuild,demo/qordemo.lpi,demo)

tests-build: packages
	$(call lazbuild,tests/modules/qormsgmodule.lpi,qormsgmodule)
	$(call lazbuild,tests/qortests.lpi,tests)

bench-build: packages
	$(call lazbuild,bench/qorbench.lpi,bench)

# qordict needs no LCL: the compiler alone builds it.
tools: deps
	@mkdir -p build/tools
	@echo "fpc tools/qordict.lpr"
	@fpc -Mobjfpc -Sh -O2 -FEbuild -FUbuild/tools -Futools tools/qordict.lpr > $(LOGS)/qordict.log 2>&1 || { cat $(LOGS)/qordict.log; exit 1; }

build: demo-build tests-build bench-build tools

dict: tools
	@for csv in resources/dict/*.csv; do build/qordict csv2xml "$$csv" "$${csv%.csv}.xml"; echo "$${csv%.csv}.xml"; done

demo: demo-build
	@if [ -n "$$DISPLAY" ]; then \
	  build/qordemo; \
	else \
	  echo "no DISPLAY: running the demo under Xvfb, writing demo-screenshot.png"; \
	  xvfb-run -a -s "$(XVFB_SCREEN)" build/qordemo --screenshot=demo-screenshot.png; \
	fi

test: build
	@tests/run-tests.sh

bench: bench-build
	@xvfb-run -a -s "$(XVFB_SCREEN)" build/qorbench bench/results.tsv

clean:
	rm -rf build packages/lib demo-screenshot.png
