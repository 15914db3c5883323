# The targets of scripts/portability; it and scripts/packages --windows read this file.

folder=$PWD/build/portability
toolchains=$PWD/cmake/toolchains

# Warnings are errors. -Wuseless-cast is left out: what is useless for one processor is needed for the next.
warnings="-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor \
-Woverloaded-virtual -Wcast-qual -Wformat=2 -Wundef -Werror"

# What an emulated processor leaves out, since it would take hours: many rounds of what other tests try once, and huge inputs.
# The other targets run it.
repeated="*RandomTree*:*.RunningOutOfMemoryKeeps*:DatabaseCopy.OfUnsettled*:EBRSetters.*RandomTexts:Limits.*:*HugeTexts*:\
Faults.AFileHasAQuarter*:Faults.ATextOf64MiB*:HostileFiles.ManyFaults*:HostileFiles.OfManyBytes*:HostileFiles.NothingButMarkup*"

# options_of TARGET: sets `options`, those of CMake; `emulator`, what runs a program; `suffix`, that of programs; and `filter`,
# the tests to run.
options_of() {
  options=(-DPLDDB_BUILD_TOOL=ON)
  emulator=()
  filter='*'
  suffix=
  case "$1" in
    windows*) options+=(--toolchain "$toolchains/x86_64-w64-mingw32.cmake") emulator=(wine) suffix=.exe ;;
    i386) options+=(--toolchain "$toolchains/i686-linux-gnu.cmake") ;;  # x86-64 runs its programs
    arm64) options+=(--toolchain "$toolchains/aarch64-linux-gnu.cmake") emulator=(qemu-aarch64 -L /usr/aarch64-linux-gnu) ;;
    s390x) options+=(--toolchain "$toolchains/s390x-linux-gnu.cmake") emulator=(qemu-s390x -L /usr/s390x-linux-gnu) ;;
    libc++) options+=(-DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS=-stdlib=libc++) ;;
    clang-c++20 | clang-c++23) options+=(-DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_STANDARD="${1#clang-c++}") ;;
    c++20 | c++23) options+=(-DCMAKE_CXX_STANDARD="${1#c++}") ;;
    native) ;;
    *) echo "portability: error: there is no target $1" >&2; return 2 ;;
  esac
  case "$1" in arm64 | s390x) filter=-$repeated ;; esac
  case "$1" in *-static) options+=(-DBUILD_SHARED_LIBS=OFF) ;; esac
}

# Whether a target needs its own pugixml, zlib and GoogleTest.
is_foreign() { case "$1" in windows* | i386 | arm64 | s390x | libc++) ;; *) return 1 ;; esac; }

# build_dependencies TARGET: into build/portability/TARGET/dependencies; windows-static shares those of windows.
build_dependencies() {
  local name=${1%-static}
  dependencies=$folder/$name/dependencies
  [ ! -e "$dependencies/lib/libz.a" ] || return 0
  scripts/fetch-sources
  cmake -S cmake/dependencies -B "$folder/$name/dependencies-build" -G Ninja "${launcher[@]}" "${options[@]}" \
    -DPLDDB_SOURCES="$PWD/build/sources" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$dependencies"
  cmake --build "$folder/$name/dependencies-build" --target install
}

# configure_target TARGET OPTION...
configure_target() {
  local target=$1 flags="-O1 $warnings"
  shift
  case "$target" in libc++) flags="-stdlib=libc++ $flags" ;; esac
  case "$target" in windows* | *clang* | libc++) ;; *) flags="$flags -Wno-psabi" ;; esac
  if is_foreign "$target"; then
    build_dependencies "$target"
    options+=(-DCMAKE_FIND_ROOT_PATH="$dependencies")
    case "$target" in libc++) options+=(-DCMAKE_PREFIX_PATH="$dependencies") ;; esac
  fi
  cmake -S . -B "$folder/$target/build" -G Ninja "${launcher[@]}" "${options[@]}" -DCMAKE_BUILD_TYPE=None \
    -DCMAKE_CXX_FLAGS="$flags" -DPLDDB_TEST_FLAGS=-O0 -DPLDDB_INSTALL=OFF \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 "$@"  # one source a library saves time
}

# The test programs of a target; those of the command and of openocd run programs of this machine.
test_programs() { find "$folder/$1/build" -name 'plddb_*_test*' -type f -executable ! -name '*tool_test*' ! -name '*scanner_test*' | sort; }

# run_tests TARGET: prints "N passed, N failed". What the DLL exports counts as one test.
run_tests() {
  local target=$1 program log=$folder/$1/test.log passed=0 bad=0 count
  : >"$log"
  export WINEPREFIX=$folder/wine WINEDEBUG=-all
  while read -r program; do
    "${emulator[@]}" "$program" --gtest_filter="$filter" >"$log.one" 2>&1 </dev/null || true
    count=$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\.\r?$/\1/p' "$log.one")
    passed=$((passed + ${count:-0}))
    count=$(sed -nE 's/^ *([0-9]+) FAILED TESTS?\r?$/\1/p' "$log.one")
    # A program that did not come to its end counts as one failure.
    if ! grep -q '^\[  PASSED  \]' "$log.one"; then count=1; fi
    bad=$((bad + ${count:-0}))
    { echo "$program"; cat "$log.one"; } >>"$log"
  done < <(test_programs "$target")
  rm -f "$log.one"
  if [ "$target" = windows ]; then
    if compare_exports "$folder/$target/build/bin/libplddb.dll" >>"$log" 2>&1; then passed=$((passed + 1)); else bad=$((bad + 1)); fi
  fi
  echo "$passed passed, $bad failed"
}

# Whether a DLL exports what the shared library of this machine does.
compare_exports() {
  cmake -DOBJDUMP=x86_64-w64-mingw32-objdump -DCXXFILT=c++filt -DLIBRARY="$1" -DLIST="$PWD/tests/exported_operations.txt" \
    -P tests/check-exported.cmake
}

# transcript TARGET: what the command writes, into build/portability/TARGET/transcript.txt.
transcript() {
  options_of "$1"
  tests/portability/transcript "${emulator[@]}" "$folder/$1/build/bin/plddb$suffix" >"$folder/$1/transcript.txt" 2>"$folder/$1/transcript.log"
}

# What differs, as a text; the command of this machine is built for it once.
compare_output() {
  if [ ! -e "$folder/native/transcript.txt" ]; then
    options_of native
    quietly "$folder/native/configure.log" configure_target native
    quietly "$folder/native/build.log" cmake --build "$folder/native/build" --target plddb_tool
    transcript native
  fi
  transcript "$1"
  if diff "$folder/native/transcript.txt" "$folder/$1/transcript.txt" >"$folder/$1/transcript.diff"; then
    echo equal
  else
    echo "$(grep -c '^[<>]' "$folder/$1/transcript.diff") lines differ"
  fi
}

prepare() {
  scripts/install-tools portability
  rm -f "$folder/native/transcript.txt"
}

# try_target TARGET: prints its row of the table.
try_target() {
  local target=$1 tests output
  if [ "$target" = wasm ]; then try_wasm; return; fi
  options_of "$target"
  mkdir -p "$folder/$target"
  if ! quietly "$folder/$target/configure.log" configure_target "$target" -DPLDDB_BUILD_TESTS=ON ||
    ! quietly "$folder/$target/build.log" cmake --build "$folder/$target/build" --target plddb_tool plddb_portable_tests; then
    printf '%-16s %-8s\n' "$target" no
    return 1
  fi
  tests=$(run_tests "$target")
  output=$(compare_output "$target")
  printf '%-16s %-8s %-24s %s\n' "$target" yes "$tests" "$output"
  [[ $tests == *" 0 failed" && $output == equal ]]
}

# The programs of tests/consumer, one for each library, under node: without fetch(), which takes
# no path, this emscripten reads files. The first line of each is "// Uses ..., prints: TEXT".
try_wasm() {
  mkdir -p "$folder/wasm"
  if ! quietly "$folder/wasm/build.log" build_wasm; then
    printf '%-16s %-8s\n' wasm no
    return 1
  fi
  local source expected answer passed=0 bad=0
  for source in tests/consumer/*.cpp; do
    expected=$(sed -n '1s|^// Uses .*, prints: ||p' "$source")
    answer=$(node --no-experimental-fetch "$folder/wasm/build/$(basename "$source" .cpp).js" 2>&1) || true
    if [ "$answer" = "$expected" ]; then passed=$((passed + 1)); else bad=$((bad + 1)); fi
    echo "$source: $answer"
  done >"$folder/wasm/test.log"
  printf '%-16s %-8s %s\n' wasm yes "$passed passed, $bad failed"
  [ "$bad" = 0 ]
}

build_wasm() {
  scripts/emscripten
  export NODE_PATH=/usr/share/nodejs
  emcmake cmake -G Ninja -S tests/consumer -B "$folder/wasm/build" -DPLDDB_FROM=subdirectory -DPLDDB_SOURCE="$PWD" \
    -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=None -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 \
    -DCMAKE_CXX_FLAGS="-O1 $warnings" \
    -DCMAKE_FIND_ROOT_PATH="$PWD/build/emscripten/root" -DCMAKE_PREFIX_PATH=/
  cmake --build "$folder/wasm/build"
}
