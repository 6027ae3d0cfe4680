# Sourced by the build scripts, after they set root to the checkout.
#
# When ccache is there, every build folder and checkout shares one cache of compiled objects, so a
# fresh checkout rebuilds only what changed. Paths are made relative to the checkout, so the cache
# serves any checkout of the tree.
if command -v ccache >/dev/null 2>&1; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1 CCACHE_MAXSIZE="${CCACHE_MAXSIZE:-20G}"
fi

# configure FOLDER CMAKE-ARGUMENTS...: Ninja starts a library's units while the libraries it links
# to still compile, which Make does not. A folder configured earlier by another generator starts
# afresh.
configure() {
    local build="$1"
    shift
    if [ -f "$build/CMakeCache.txt" ] && ! grep -qx 'CMAKE_GENERATOR:INTERNAL=Ninja' "$build/CMakeCache.txt"; then
        rm -rf "$build"
    fi
    cmake -G Ninja -S "$root" -B "$build" "$@" >/dev/null
}
