// A program outside of the project, in C++17. It uses what is exported in different ways (functions, a class to derive
// from, an error to catch, the paths of Boost), and ends with 0 when all of them worked.

#include "orv/files/FileSystemUtil.h"
#include "orv/foundation/Exception.h"
#include "orv/serialization/Serializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"
#include "orv/time/Time.h"
#include "orv/time/TimeOffset.h"

#include <iostream>
#include <sstream>

using namespace Zan::Orv::Core::Service;

namespace {

struct Tank : ISerializable
{
    double level = 0;

    void Serialize(Serializer& serializer) override { serializer.Serialize(level, "level"); }
};

double LevelThroughXML(Tank& tank)
{
    std::stringstream document;
    {
        XMLOutputSerializer xml(document, "run");
        Serializer(xml).Serialize(tank, "tank");
    }
    Tank copy;
    XMLInputSerializer xml(document, "run");
    Serializer(xml).Serialize(copy, "tank");
    return copy.level;
}

bool RefusesNoDocument()
{
    std::istringstream nothing("nothing");
    try
    {
        XMLInputSerializer xml(nothing, "run");
    }
    catch (SerializeException const&)
    {
        return true;
    }
    return false;
}

} // namespace

int main()
{
    Tank tank;
    tank.level = 2.5;
    Time end(2000, 1, 31, 0, 0, 0, 0);
    end += TimeOffset(0, 1, 0, 0, 0, 0, 0);
    boost::filesystem::path const deck = FileSystemUtil("data", "work").getDataDir("main.dat");

    bool const works = LevelThroughXML(tank) == 2.5 && RefusesNoDocument() &&
                       end == Time(2000, 2, 29, 0, 0, 0, 0) && deck.filename() == "main.dat" &&
                       boost::filesystem::path("folder/").filename() == ".";
    std::cout << (works ? "The library works.\n" : "The library does not work.\n");
    return works ? 0 : 1;
}
