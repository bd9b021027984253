#include "orv/time/ParseTime.h"

#include <exception>
#include <iostream>
#include <string>

using namespace Zan::Orv::Core::Service;

int main()
{
    std::string const texts[] = {
        "25/12/2000 14:30",      // 25 can only be the day
        "2000-12-25",            // 2000 can only be the year
        "JAN 5 2000",            // a word is the month
        "5 JLY 99 2:30:15.5",    // a two-digit year
        "31/31/2000",            // no date in any order
        "30 FEB 2000",           // a date that does not exist
        "two days after launch", // no date at all
    };
    for (std::string const& text : texts)
    {
        try
        {
            Time const time = ParseTime(text, true);
            std::cout << text << " -> " << time << '\n';
        }
        catch (std::exception const& e)
        {
            std::cout << text << " -> refused: " << e.what() << '\n';
        }
    }
}
