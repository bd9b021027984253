#include "orv/files/ExtensionFilters.h"
#include "orv/files/FileCatalog.h"
#include "orv/files/FilteredFileFinder.h"
#include "orv/foundation/Exception.h"
#include "orv/serialization/BinaryInputSerializer.h"
#include "orv/serialization/BinaryOutputSerializer.h"
#include "orv/serialization/Factory.h"
#include "orv/serialization/Serializer.h"
#include "orv/serialization/StreamInputSerializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"
#include "orv/time/Time.h"
#include "orv/time/TimeAverager.h"
#include "orv/time/TimeOffset.h"

#include <boost/filesystem.hpp>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

// What a large program puts on the library, once each: how long it takes, and how much memory. Wrong results end the
// program. Run by scripts/load.

using namespace Zan::Orv::Core::Service;

namespace {

class Stopwatch
{
public:
    double Seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
    }

private:
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

/// Bytes in use on the heap, large blocks included.
double HeapBytes()
{
    struct mallinfo2 const info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void Require(bool condition, char const* what)
{
    if (!condition)
        throw std::runtime_error(std::string("Wrong result: ") + what);
}

struct Sample : ISerializable
{
    int well = 0;
    double rate = 0.0;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(well, "well");
        serializer.Serialize(rate, "rate");
    }
};

struct Link : ISerializable
{
    Link* next = nullptr;

    void Serialize(Serializer& serializer) override { serializer.Serialize(next, "next"); }
};

FactoryRegistrar<Link> const registerLink("Link");

/// A chain that frees itself without recursion.
struct Chain
{
    Link* first = nullptr;

    Chain() = default;
    explicit Chain(int length)
    {
        for (int i = 0; i < length; ++i)
        {
            auto* const link = new Link;
            link->next = first;
            first = link;
        }
    }
    Chain(Chain const&) = delete;
    Chain& operator=(Chain const&) = delete;
    ~Chain()
    {
        for (Link const* link = first; link != nullptr;)
        {
            Link const* const next = link->next;
            delete link;
            link = next;
        }
    }

    int Length() const
    {
        int length = 0;
        for (Link const* link = first; link != nullptr; link = link->next)
            ++length;
        return length;
    }
};

template<class Output, class T, class... Root>
std::string Write(T& value, Root... root)
{
    std::ostringstream stream;
    {
        Output output(stream, root...); // its end is that of the document
        Serializer(output).Serialize(value, "x");
    }
    return stream.str();
}

template<class Input, class T, class... Root>
void Read(std::string const& document, T& value, Root... root)
{
    std::istringstream stream(document);
    Input input(stream, root...);
    Serializer(input).Serialize(value, "x");
}

template<class Output, class Input, class... Root>
void PassObjects(char const* form, Root... root)
{
    constexpr int count = 1'000'000;
    std::vector<Sample> samples(count);
    for (int i = 0; i < count; ++i)
    {
        samples[static_cast<std::size_t>(i)].well = i;
        samples[static_cast<std::size_t>(i)].rate = i / 8.0;
    }
    Stopwatch const writing;
    std::string const document = Write<Output>(samples, root...);
    double const written = writing.Seconds();
    std::vector<Sample> read;
    Stopwatch const reading;
    Read<Input>(document, read, root...);
    double const readSeconds = reading.Seconds();
    Require(read.size() == samples.size() && read.back().rate == samples.back().rate, form);
    std::printf("a million objects, %s: %.2f s out, %.2f s back, %.1f MB\n", form, written, readSeconds,
                static_cast<double>(document.size()) / 1e6);
}

template<class Output, class Input, class... Root>
bool CanPassChain(int length, Root... root)
{
    Chain chain(length);
    Chain read;
    try
    {
        Read<Input>(Write<Output>(chain.first, root...), read.first, root...);
    }
    catch (SerializeException const&)
    {
        return false;
    }
    Require(read.Length() == length, "a chain");
    return true;
}

/// The longest chain to a hundred that is written and read on this thread's stack.
template<class Output, class Input, class... Root>
void FindDeepest(char const* form, Root... root)
{
    int low = 0;
    int high = 1'000'000;
    while (high - low > 100)
    {
        int const middle = low + (high - low) / 2;
        (CanPassChain<Output, Input>(middle, root...) ? low : high) = middle;
    }
    std::printf("the longest chain, %s: %d objects\n", form, low / 100 * 100);
}

void QueryManyFiles()
{
    namespace fs = boost::filesystem;
    constexpr int count = 500'000;
    struct Folder
    {
        fs::path path = fs::temp_directory_path() / fs::unique_path("orv-load-%%%%-%%%%");
        ~Folder()
        {
            boost::system::error_code ignored;
            fs::remove_all(path, ignored);
        }
    } const folder;
    fs::create_directory(folder.path);
    for (int i = 0; i < count; ++i)
        std::ofstream((folder.path / ("case_" + std::to_string(i) + ".dat")).string());

    double const before = HeapBytes();
    Stopwatch const reading;
    FileCatalog const catalog(folder.path.string());
    double const read = reading.Seconds();
    double const bytes = HeapBytes() - before;
    FilteredFileFinder const finder("all", catalog);
    Stopwatch const query;
    std::size_t const found = finder.GetFiles(ExtensionFilter::Create(".DAT")).size();
    double const queried = query.Seconds();
    Require(catalog.GetEntries().size() == count && found == count, "a catalog");
    std::printf("a catalog of 500,000 files: %.2f s to read, %.0f bytes a file, %.3f s for all of them\n",
                read, bytes / count, queried);
}

void AverageManySamples()
{
    constexpr int days = 365;
    constexpr int secondsADay = 86'400;
    double const before = HeapBytes();
    Stopwatch const filling;
    TimeAverager averager;
    Time const begin(2001, 1, 1, 0, 0, 0, 0);
    Time time = begin;
    for (int second = 0; second < days * secondsADay; ++second, time += TimeOffset(0, 0, 0, 0, 0, 1, 0))
        averager.addSamplePoint(time, second % 2);
    double const filled = filling.Seconds();
    double const bytes = HeapBytes() - before;
    Stopwatch const averaging;
    double const mean = averager.getAverageValue(begin, time, TimeAverager::TimeAverageStyle::Point);
    Require(mean == 0.5, "a mean");
    std::printf("a year of seconds: %.2f bytes a sample, %.2f s to fill, %.2f s for the mean over all\n",
                bytes / (days * double(secondsADay)), filled, averaging.Seconds());
}

} // namespace

int main()
{
    std::setbuf(stdout, nullptr);
    try
    {
        PassObjects<XMLOutputSerializer, XMLInputSerializer>("XML", "root");
        PassObjects<BinaryOutputSerializer, BinaryInputSerializer>("binary");
        PassObjects<StreamOutputSerializer, StreamInputSerializer>("text");
        FindDeepest<XMLOutputSerializer, XMLInputSerializer>("XML", "root");
        FindDeepest<BinaryOutputSerializer, BinaryInputSerializer>("binary");
        FindDeepest<StreamOutputSerializer, StreamInputSerializer>("text");
        QueryManyFiles();
        AverageManySamples();
    }
    catch (std::exception const& e)
    {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
