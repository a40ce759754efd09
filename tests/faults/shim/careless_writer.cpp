// A program that saves as no program should: it writes the target in place, looks at no result, deletes its
// source and reports a success. The checks must find that out.
//
// Arguments: source, target, report.
#include <fcntl.h>
#include <unistd.h>

#include <array>

int main(int, char** arguments)
{
    const int source = open(arguments[1], O_RDONLY);
    const int target = open(arguments[2], O_WRONLY | O_CREAT | O_TRUNC, 0666);
    std::array<char, 64> block;
    for (ssize_t got = 0; (got = read(source, block.data(), block.size())) > 0;)
        (void)!write(target, block.data(), static_cast<size_t>(got));
    close(target);
    unlink(arguments[1]);
    const int report = open(arguments[3], O_WRONLY | O_CREAT | O_APPEND, 0666);
    constexpr char kText[] = "Conversion Successful\n";
    (void)!write(report, kText, sizeof kText - 1);
    close(report);
    return 0;
}
