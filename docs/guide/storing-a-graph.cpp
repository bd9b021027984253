#include "orv/serialization/Factory.h"
#include "orv/serialization/Serializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace Zan::Orv::Core::Service;

struct Tank : ISerializable
{
    std::string name;
    double volume = 0.0; // m3
    std::vector<std::shared_ptr<Tank>> drains;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(name, "name");
        serializer.Serialize(volume, "volume");
        serializer.Serialize(drains, "drains");
    }
};

// The name stands in documents and never changes, whatever becomes of the class.
static FactoryRegistrar<Tank> const registrar("Plant::Tank");

int main()
{
    auto upper = std::make_shared<Tank>();
    auto lower = std::make_shared<Tank>();
    upper->name = "upper";
    upper->volume = 12.5;
    upper->drains = {lower, lower}; // one tank, two pipes
    lower->name = "lower";
    lower->drains = {upper}; // a pump: the graph has a cycle

    std::stringstream document;
    {
        XMLOutputSerializer xml(document, "plant");
        Serializer(xml).Serialize(upper, "tank");
    } // here the document is complete

    std::shared_ptr<Tank> copy;
    XMLInputSerializer xml(document, "plant");
    Serializer(xml).Serialize(copy, "tank");
    std::cout << copy->name << ", " << copy->volume << " m3\n" << std::boolalpha;
    std::cout << "one lower tank: " << (copy->drains[0] == copy->drains[1]) << '\n';
    std::cout << "the cycle closes: " << (copy->drains[0]->drains[0] == copy) << '\n';

    // Shared pointers in a cycle keep each other alive: who makes one has to break it.
    upper->drains.clear();
    copy->drains.clear();
}
