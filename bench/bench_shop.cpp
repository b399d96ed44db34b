// SPDX-License-Identifier: MIT
#include "bench_shop.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <numeric>
#include <random>
#include <vector>

#include "core/film_record.h"
#include "core/text.h"
#include "platform/files.h"

namespace tilo::bench {

const std::string& ShopWithItems(int64_t records) {
  static std::map<int64_t, std::string> made;
  auto it = made.find(records);
  if (it != made.end()) return it->second;
  std::string folder =
      (std::filesystem::temp_directory_path() / ("tilo-bench-" + std::to_string(records))).string();
  std::filesystem::create_directories(folder);
  const std::string path = folder + "/film.dat";
  auto size = FileSize(path);
  if (!size || *size != records * int64_t(sizeof(FilmRecord))) {
    std::vector<int64_t> numbers(static_cast<size_t>(records));
    std::iota(numbers.begin(), numbers.end(), 1);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937_64(42));
    File f(path, File::Mode::Create);
    std::vector<FilmRecord> block(4096);
    for (size_t done = 0; done < numbers.size();) {
      size_t n = std::min(block.size(), numbers.size() - done);
      for (size_t i = 0; i < n; ++i) {
        block[i] = FilmRecord{};
        block[i].number = numbers[done + i];
        SetField(block[i].description, "ITEM " + std::to_string(numbers[done + i]));
        block[i].retail_price = 1.99f;
        block[i].quantity = 100;
      }
      f.write(block.data(), int64_t(n * sizeof(FilmRecord)));
      done += n;
    }
  }
  return made.emplace(records, folder).first->second;
}

void EnterFolder(const std::string& folder) {
  if (chdir(folder.c_str()) != 0) std::abort();
}

}  // namespace tilo::bench
