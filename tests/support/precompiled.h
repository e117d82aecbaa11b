// What nearly every test includes, compiled once. Each file still includes what it uses: editors, and builds
// without precompiled headers, read it alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <boost/unordered/unordered_flat_map.hpp>
