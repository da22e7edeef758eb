# The commands a person types. `make help` lists them.
.DEFAULT_GOAL := help
.PHONY: help setup demo test web bench ios asan tsan arm64 arm64-core arm64-setup lint clean

JOBS ?= $(shell nproc)

help:
	@echo "make demo    a day of a managed phone: apps under the sandbox, on the simulated device"
	@echo "make test    build all and run the tests"
	@echo "make web     test the pages in Chromium"
	@echo "make asan    the tests under AddressSanitizer and UBSan"
	@echo "make tsan    the tests that have threads, under ThreadSanitizer"
	@echo "make arm64   the tests as arm64, under an emulator"
	@echo "make bench   measure what the sandbox costs"
	@echo "make ios     the framework for iPhones, iPads and their simulator, built and checked: build/ios/QVSandbox.xcframework"
	@echo "make lint    format, static analysis, scripts, headers"
	@echo "make clean   remove build/"

setup:
	@scripts/setup.sh

# $(call build,PRESET,TARGETS): configures and builds, all without TARGETS.
build = scripts/build.sh $(1) $(JOBS) $(2)

# All that can be looked at, without the tests and benchmarks: somebody waits to see it.
shown = qvdevice QVSandbox Leaker.app Manager.app Notes.app Reader.app Vault.app

demo: setup
	@$(call build,linux,$(shown))
	@build/linux/bin/qvdevice play apps/day.scenario --report build/demo

test: setup
	@$(call build,linux)
	@scripts/test.sh linux

web: setup
	@scripts/web-setup.sh
	@$(call build,linux,$(shown))
	@node --test tests/web/

asan: setup
	@$(call build,linux-asan)
	@scripts/test.sh linux-asan

tsan: setup
	@$(call build,linux-tsan,thread-tests)
	@scripts/test.sh linux-tsan

# What makes the containers, and what confines, is this machine's.
arm64-setup: setup
	@scripts/arm64-root.sh
	@$(call build,linux,qvdevice qvconfine)

arm64: arm64-setup
	@$(call build,linux-arm64)
	@scripts/test.sh linux-arm64

# What arm64's calling conventions can touch, and no more.
arm64-core: arm64-setup
	@$(call build,linux-arm64,arm64-core)
	@scripts/test.sh linux-arm64-core

bench: setup
	@$(call build,linux)
	@cmake --build --preset linux --target bench

ios: setup
	@$(call build,linux,qvcheck)
	@$(call build,ios)
	@$(call build,ios-simulator-arm64)
	@$(call build,ios-simulator-x86_64)
	@scripts/xcframework.sh build/ios/QVSandbox.xcframework build/ios build/ios-simulator-arm64 build/ios-simulator-x86_64
	@scripts/test.sh ios
	@echo "build/ios/QVSandbox.xcframework"

lint: setup
	@$(call build,linux)
	@scripts/lint.sh build/linux

clean:
	rm -rf build
