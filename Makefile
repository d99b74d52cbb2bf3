# The menu. Every entry sets up what it needs by itself (as root on Debian 12) and works in a fresh clone.
.DEFAULT_GOAL := help
SHELL := /bin/bash
OUTLOOK ?= 2003
ifneq ($(origin LANGUAGE),command line)
LANGUAGE := English# not what the environment calls so
endif
BITS ?= 32
SECONDS ?= 60
SHARE ?= 1/1
N ?= 40
.PHONY: help tools dll setup release reproducible symbols demo run test test-all bench fuzz weather mutants check format screenshots clean

help:             ## this list
	@grep -hE '^[a-z-]+: .*##|^[a-z-]+:  +##' $(MAKEFILE_LIST) | sed -E 's/: *[a-z-]* *##/\t/' | expand -t 14

tools:            ## install what a bare Debian 12 lacks
	@scripts/install-tools.sh

dll: tools        ## build what a user installs into dist/: the DLL beside its language files and help, in dist/x64 for 64 bits
	@scripts/build.sh win32-release CVOutlookAddIn CorvellaCheck cv_help
	@scripts/build.sh win64-release CVOutlookAddIn
	@scripts/dist.sh

setup: tools      ## the setup and a zip of the same files, into dist/
	@scripts/setup.sh

release: tools    ## everything a release is made of, into dist/: checked, tested, with symbols and checksums
	@scripts/release.sh

reproducible: tools ## build what users get twice, elsewhere the second time, and compare the bytes
	@scripts/reproducible.sh

symbols: tools    ## which line of the sources an address comes from, for the libraries as shipped, into dist/
	@scripts/symbols.sh

demo: tools       ## a working day with the add-in: make demo [OUTLOOK=2000|2002|2003|2007|2010|2013|2016] [BITS=64] [LANGUAGE=Deutsch]
	@scripts/demo.sh $(OUTLOOK) $(LANGUAGE) $(BITS)

run: tools        ## the same Outlook stand-in for a person to click in (needs a display)
	@scripts/run.sh $(OUTLOOK) $(LANGUAGE) $(BITS)

test: tools       ## all tests: under Wine, 64 bits sampled, and the pure text natively with sanitizers
	@scripts/test.sh

test-all: tools   ## the same with 64 bits and every version of Outlook whole (some 20 minutes more)
	@scripts/test.sh --whole

bench: tools      ## ratios against baselines of the same run; also build/bench.csv
	@scripts/bench.sh

fuzz: tools       ## make fuzz SECONDS=n: run every fuzz target for n seconds
	@scripts/fuzz.sh $(SECONDS)

weather: tools    ## each call of each function of Windows fails in turn: make weather [SHARE=A/B]
	@scripts/weather.sh $(SHARE)

mutants: tools    ## does a test notice? make mutants N=40 SEED=n: N small changes to src/, one at a time
	@scripts/mutants.py $(N) $(if $(SEED),--seed $(SEED))

check: tools      ## floors, headers, imports, languages, format, clang-tidy
	@scripts/check.sh

format: tools     ## settle all spacing with clang-format
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

screenshots: tools ## pictures for the documentation, into docs/pictures
	@scripts/screenshots.sh

clean:            ## remove what was built
	@rm -rf build dist
