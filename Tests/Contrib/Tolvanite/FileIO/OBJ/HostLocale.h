#pragma once

/// \file
/// A host whose locale writes numbers in another form.

#include <locale>

namespace OSG::Test
{
/// While it lives, the global locale groups thousands and has a decimal separator of its own.
class HostLocale
{
  public:
    HostLocale(char point, char separator)
        : _former(std::locale::global(
              std::locale(std::locale::classic(), new Numbers(point, separator))))
    {
    }
    ~HostLocale() { std::locale::global(_former); }
    HostLocale(HostLocale const &) = delete;
    HostLocale &operator=(HostLocale const &) = delete;

  private:
    class Numbers : public std::numpunct<char>
    {
      public:
        Numbers(char point, char separator)
            : _point(point)
            , _separator(separator)
        {
        }

      protected:
        char do_decimal_point() const override { return _point; }
        char do_thousands_sep() const override { return _separator; }
        std::string do_grouping() const override { return "\3"; }

      private:
        char _point;
        char _separator;
    };

    std::locale _former;
};
} // namespace OSG::Test
