// kitbay_bench_compare_expanders ROUNDS FOLDER ARCHIVE KITBAY
// Expands an archive below FOLDER with each program in turn, ROUNDS times, starting each round with
// a different one. Prints the median elapsed time, the median processor time and the peak memory of
// each. KITBAY is the path of kitbay_bench_expansion.
//
// This program is small and starts the others itself, because the reported peak memory of a process
// includes its parent's memory at the start.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

struct Expander {
  std::string name;
  std::vector<std::string> command;
  std::vector<double> elapsed = {};    ///< milliseconds
  std::vector<double> processor = {};  ///< milliseconds
  long most_memory = 0;                ///< kilobytes
};

[[noreturn]] void End(const std::string& why) {
  std::fprintf(stderr, "%s\n", why.c_str());
  std::exit(1);
}

double Milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

double Median(std::vector<double> numbers) {
  std::sort(numbers.begin(), numbers.end());
  const std::size_t middle = numbers.size() / 2;
  return numbers.size() % 2 == 1 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2;
}

[[noreturn]] void Become(const std::vector<std::string>& command, const std::string& folder) {
  std::vector<char*> words;
  for (const std::string& word : command) {
    words.push_back(const_cast<char*>(word.c_str()));
  }
  words.push_back(nullptr);
  const int nothing = open("/dev/null", O_RDWR);
  dup2(nothing, STDIN_FILENO);
  dup2(nothing, STDOUT_FILENO);
  if (chdir(folder.c_str()) == 0) {
    execvp(words[0], words.data());
  }
  _exit(127);
}

void Measure(Expander& expander, const std::string& folder) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    Become(expander.command, folder);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
    End(expander.name + " failed");
  }
  const std::chrono::duration<double, std::milli> elapsed =
      std::chrono::steady_clock::now() - start;
  expander.elapsed.push_back(elapsed.count());
  expander.processor.push_back(Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime));
  expander.most_memory = std::max(expander.most_memory, usage.ru_maxrss);
}

}  // namespace

int main(int count, char** words) {
  if (count != 5) {
    End("usage: kitbay_bench_compare_expanders ROUNDS FOLDER ARCHIVE KITBAY");
  }
  const int rounds = std::atoi(words[1]);
  const std::string folder = std::string(words[2]) + "/out";
  const std::string archive = words[3];
  std::vector<Expander> expanders = {
      {"Kitbay", {words[4], archive, folder}},
      {"unzip", {"unzip", "-qq", archive}},
      {"7z", {"7zz", "x", "-bso0", "-bsp0", "-y", archive}},
      {"bsdtar", {"bsdtar", "-xf", archive}},
      {"miniunzip", {"miniunzip", "-o", archive}},
  };
  // The first round only warms up the machine.
  for (int round = 0; round <= rounds; ++round) {
    for (std::size_t turn = 0; turn < expanders.size(); ++turn) {
      Expander& expander = expanders[(turn + static_cast<std::size_t>(round)) % expanders.size()];
      std::filesystem::remove_all(folder);
      std::filesystem::create_directory(folder);
      sync();
      Measure(expander, folder);
    }
    if (round == 0) {
      for (Expander& expander : expanders) {
        expander.elapsed.clear();
        expander.processor.clear();
      }
    }
  }
  std::filesystem::remove_all(folder);
  std::printf("%-10s %10s %10s %12s\n", "", "elapsed", "processor", "most memory");
  for (const Expander& expander : expanders) {
    std::printf("%-10s %7.0f ms %7.0f ms %9.1f MB\n", expander.name.c_str(),
                Median(expander.elapsed), Median(expander.processor),
                static_cast<double>(expander.most_memory) / 1024);
  }
  return 0;
}
