# Sourced by the build scripts: when ccache is there, every build folder and checkout shares one
# cache of compiled objects, so a fresh checkout rebuilds only what changed. Paths are made
# relative to the checkout, so the cache serves any checkout of the tree.
if command -v ccache >/dev/null 2>&1; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1 CCACHE_MAXSIZE="${CCACHE_MAXSIZE:-20G}"
fi
