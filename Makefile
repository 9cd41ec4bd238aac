# What users and developers need; CMake does the work. See README.md.

.PHONY: run deb check check-all bench clean

# Only what is missing is installed; with a display, what only tests need is left out.
DEPENDENCIES_OF_RUN = $(if $(DISPLAY),build,check)

run:
	@scripts/install-dependencies $(DEPENDENCIES_OF_RUN)
	@cmake --preset release $(if $(DISPLAY),-DBUILD_TESTING=OFF) >/dev/null
	@cmake --build --preset release --target tarvik
	@if [ -n "$$DISPLAY" ]; then exec build/release/tarvik; else exec scripts/demo build/release/tarvik build/demo; fi

deb:
	@scripts/install-dependencies package
	@DEB_BUILD_OPTIONS="nocheck noautodbgsym $$DEB_BUILD_OPTIONS" DEB_BUILD_PROFILES=nocheck scripts/package
	@ls build/package/*.deb

check:
	@scripts/install-dependencies check
	@scripts/check

check-all:
	@scripts/install-dependencies check
	@scripts/check --all

bench:
	@scripts/install-dependencies check
	@cmake --preset release -DBUILD_TESTING=ON >/dev/null
	@cmake --build --preset release --target benches
	@scripts/bench

clean:
	rm -rf build
