// The records of wide.toml, written by hand for just these: wide RECORDS FILE. What a generator
// that reads its settings can come up to.
//
// A record differs from the one before it in the last characters of each field, seldom in more: the
// rest is in a line that is copied, and each field turns its last characters on a wheel.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t line_size = 86;
constexpr std::size_t copied_size = 96;  // in whole 16-byte stores
constexpr std::size_t block_size = 256 * 1024;

// Where the fields of a line begin.
enum Place : std::size_t {
  record_no = 0,
  balance_change = 11,
  price = 18,
  article = 28,
  customer = 34,
  order_date = 45,
  order_time = 54,
  changed_at = 61,
  batch_day = 77,
};

constexpr auto digit_pairs = [] {
  std::array<char, 200> pairs = {};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

constexpr auto letter_pairs = [](char base) {
  std::array<char, 2 * 26 * 26> pairs = {};
  for (int i = 0; i < 26 * 26; ++i) {
    pairs[static_cast<std::size_t>(2 * i)] = static_cast<char>(base + i / 26);
    pairs[static_cast<std::size_t>(2 * i + 1)] = static_cast<char>(base + i % 26);
  }
  return pairs;
};
constexpr auto upper_pairs = letter_pairs('A');
constexpr auto lower_pairs = letter_pairs('a');

// "0000" to "5959".
constexpr auto clock_texts = [] {
  std::array<char, 4 * 3600> texts = {};
  for (std::size_t i = 0; i < 3600; ++i) {
    for (std::size_t k = 0; k < 2; ++k) {
      texts[4 * i + k] = digit_pairs[i / 60 * 2 + k];
      texts[4 * i + 2 + k] = digit_pairs[i % 60 * 2 + k];
    }
  }
  return texts;
}();

void put(char* out, int digits, std::int64_t value) {
  for (int i = digits; i-- > 0; value /= 10) out[i] = static_cast<char>('0' + value % 10);
}

void put_letters(char* out, std::int64_t ordinal, char base) {
  for (int i = 5; i-- > 0; ordinal /= 26) out[i] = static_cast<char>(base + ordinal % 26);
}

int days_in_month(int year, int month) {
  constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && year % 4 == 0 ? 29 : lengths[month - 1];  // 1970 to 2038
}

// A calendar date; true when the month has changed.
struct Date {
  int year = 1970;
  int month = 1;
  int day = 1;

  bool next() {
    if (++day <= days_in_month(year, month)) return false;
    day = 1;
    if (++month > 12) month = 1, ++year;
    return true;
  }
  void put_into(char* out) const {
    put(out, 4, year);
    put(out + 4, 2, month);
    put(out + 6, 2, day);
  }
};

class Records {
 public:
  Records() {
    std::memcpy(line_,
                "0000000001,+00001,000000.01,AAAAA,CUST-aaaaa,19700101,000000,"
                "19700101 090000,700101,,\n",
                line_size);
  }

  // Writes the next record; up to copied_size bytes are touched.
  void write(char* out) {
    std::memcpy(out, line_, copied_size);
    pair(out + record_no + 8, digit_pairs.data(), record_pair_);
    pair(out + balance_change + 4, digit_pairs.data(), change_pair_);
    pair(out + price + 7, digit_pairs.data(), price_pair_);
    pair(out + article + 3, upper_pairs.data(), letter_pair_);
    pair(out + customer + 8, lower_pairs.data(), letter_pair_);
    pair(out + order_date + 6, digit_pairs.data(), date_.day);
    std::memcpy(out + order_time + 2, clock_texts.data() + 4 * second_, 4);
    std::memcpy(out + changed_at + 11, clock_texts.data() + 4 * moment_, 4);
    pair(out + batch_day + 4, digit_pairs.data(), batch_day_);
    step();
  }

 private:
  static void pair(char* out, const char* pairs, std::int64_t index) {
    std::memcpy(out, pairs + 2 * index, 2);
  }

  void step() {
    if (++record_pair_ == 100) {
      record_pair_ = 0;
      put(line_ + record_no, 8, ++record_hundreds_);
    }
    if (++change_pair_ == 100) {
      change_pair_ = 0;
      if (++change_hundreds_ == 1000) change_hundreds_ = 0, change_pair_ = 1;
      put(line_ + balance_change + 1, 3, change_hundreds_);
    }
    if (++price_pair_ == 100) {
      price_pair_ = 0;
      if (++price_hundreds_ == 1'000'000) price_hundreds_ = 0, price_pair_ = 1;
      put(line_ + price, 6, price_hundreds_);
    }
    if (++letter_pair_ == 26 * 26) {
      letter_pair_ = 0;
      if (++letters_high_ == 26 * 26 * 26) letters_high_ = 0;
      put_letters(line_ + article, letters_high_ * 26 * 26, 'A');
      put_letters(line_ + customer + 5, letters_high_ * 26 * 26, 'a');
    }
    if (date_.next()) {
      if (date_.year == 2038 && date_.month == 2) date_ = Date();
      date_.put_into(line_ + order_date);
    } else if (date_.day == 20 && date_.month == 1 && date_.year == 2038) {
      date_ = Date();
      date_.put_into(line_ + order_date);
    }
    if (++second_ == 3600) {
      second_ = 0;
      if (++hour_ == 24) hour_ = 0;
      put(line_ + order_time, 2, hour_);
    }
    if ((moment_ += 9) >= 3600) next_moment_hour();
    if (moment_ > last_second_) restart_moments();
    if (++batch_day_ == 32) {
      batch_day_ = 1;
      if (++batch_month_ == 13) {
        batch_month_ = 1;
        if (++batch_year_ == 100) batch_year_ = 70;
        put(line_ + batch_day, 2, batch_year_);
      }
      put(line_ + batch_day + 2, 2, batch_month_);
    }
  }

  void next_moment_hour() {
    moment_ -= 3600;
    if (++moment_hour_ == 24) {
      moment_hour_ = 0;
      moment_date_.next();
    }
    const bool is_last_hour = moment_date_.year == 2038 && moment_date_.month == 1 &&
                              moment_date_.day == 19 && moment_hour_ == 3;
    last_second_ = is_last_hour ? 14 * 60 + 7 : 3599;
    put_moment();
  }

  void restart_moments() {
    moment_date_ = Date();
    moment_hour_ = 9;
    moment_ = 0;
    last_second_ = 3599;
    put_moment();
  }

  void put_moment() {
    moment_date_.put_into(line_ + changed_at);
    put(line_ + changed_at + 9, 2, moment_hour_);
  }

  char line_[copied_size] = {};
  std::int64_t record_hundreds_ = 0;
  std::int64_t record_pair_ = 1;
  std::int64_t change_hundreds_ = 0;
  std::int64_t change_pair_ = 1;
  std::int64_t price_hundreds_ = 0;
  std::int64_t price_pair_ = 1;
  std::int64_t letters_high_ = 0;
  std::int64_t letter_pair_ = 0;
  Date date_;
  std::int64_t second_ = 0;
  int hour_ = 0;
  Date moment_date_;
  int moment_hour_ = 9;
  std::int64_t moment_ = 0;
  std::int64_t last_second_ = 3599;
  int batch_year_ = 70;
  int batch_month_ = 1;
  std::int64_t batch_day_ = 1;
};

bool write_all(int file, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(file, data, size);
    if (written <= 0) return false;
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const long long count = std::atoll(argv[1]);
  const int file = ::open(argv[2], O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (file < 0) return 1;
  const auto block = std::make_unique<char[]>(block_size + line_size + copied_size);
  std::size_t size = 0;
  Records records;
  for (long long i = 0; i < count; ++i) {
    records.write(block.get() + size);
    size += line_size;
    if (size < block_size) continue;
    if (!write_all(file, block.get(), block_size)) return 1;
    size -= block_size;
    std::memcpy(block.get(), block.get() + block_size, size);
  }
  return write_all(file, block.get(), size) && ::close(file) == 0 ? 0 : 1;
}
