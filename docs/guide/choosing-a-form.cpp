#include "orv/serialization/BZip2Buf.h"
#include "orv/serialization/BinaryInputSerializer.h"
#include "orv/serialization/BinaryOutputSerializer.h"
#include "orv/serialization/Serializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"

#include <iostream>
#include <sstream>
#include <vector>

using namespace Zan::Orv::Core::Service;

int main()
{
    std::vector<double> pressures(1000, 101325.0); // Pa
    std::stringstream bytes, lines, marked, packed;
    {
        BinaryOutputSerializer binary(bytes);
        Serializer(binary).Serialize(pressures, "pressures");
    }
    {
        StreamOutputSerializer text(lines);
        Serializer(text).Serialize(pressures, "pressures");
    }
    {
        XMLOutputSerializer xml(marked, "state");
        Serializer(xml).Serialize(pressures, "pressures");
    }
    {
        BZip2Buf buffer(packed.rdbuf(), 9, false);
        std::ostream stream(&buffer);
        BinaryOutputSerializer binary(stream);
        Serializer(binary).Serialize(pressures, "pressures");
        buffer.close(); // the end of the compressed stream
    }
    std::cout << "binary " << bytes.str().size() << ", text " << lines.str().size() << ", XML "
              << marked.str().size() << " bytes\n";
    std::cout << "compressed to less than 100: " << std::boolalpha << (packed.str().size() < 100) << '\n';

    // Back through the same buffer, by the same call.
    std::vector<double> copy;
    BZip2Buf buffer(packed.rdbuf(), 9, false);
    std::istream stream(&buffer);
    BinaryInputSerializer binary(stream);
    Serializer(binary).Serialize(copy, "pressures");
    std::cout << "the same again: " << (stream.good() && copy == pressures) << '\n';
}
