int host();

int main() { return host(); }
